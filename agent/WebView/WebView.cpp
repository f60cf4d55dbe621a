#include "agent/WebView/WebView.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <utility>
#include <vector>

#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewsManager.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni {

// Where class-load hooks start the agent they run before the initialisers of its library.
constinit std::string REMOTE_CDN_URL;

namespace {

using platform::Task;
using platform::UIViewRef;

constexpr std::string_view kImagePlaceholder = "TARNI_OBJECT_IMAGE";
constexpr const char* kOnePixelImage = "data:image/jpeg;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA=";

std::shared_ptr<platform::UIWebView> asWebView(const UIViewRef& view) {
  auto webView = platform::as<platform::UIWebView>(view);
  if (!webView) {
    throw platform::NSException(platform::NSInvalidArgumentException,
                                "the view evaluates no scripts");
  }
  return webView;
}

// More are not steps that a person made; a page could fill the application's memory with it.
constexpr std::size_t kLongestSteps = 64UL * 1024 * 1024;

// Null when that would be longer than steps are.
std::optional<std::string> withImages(std::string_view steps, std::string_view image) {
  std::string text;
  for (auto at = steps.find(kImagePlaceholder); at != std::string_view::npos;
       at = steps.find(kImagePlaceholder)) {
    text.append(steps.substr(0, at)).append(image);
    steps.remove_prefix(at + kImagePlaceholder.size());
    if (text.size() > kLongestSteps) return std::nullopt;
  }
  if (text.size() + steps.size() > kLongestSteps) return std::nullopt;
  return std::move(text.append(steps));
}

// A pass in which nothing was recorded leaves the steps alone that wait for the sender.
void keepForSender(const std::string& steps) {
  GlobalVars& shared = GlobalVars::sharedInstance();
  if (!shared._webViewBase64Image()) shared.set_webViewBase64Image(kOnePixelImage);
  if (steps.empty()) return;
  auto recorded = withImages(steps, shared._webViewBase64Image().value_or(kOnePixelImage));
  if (!recorded) {
    platform::NSLog("Steps of a page that are too long are dropped: %zu bytes", steps.size());
    return;
  }
  platform::NSLog("**HYBRID RECORDED STEPS %s", steps.c_str());
  shared.set_hybridRecordedSteps(std::move(recorded));
}

// The page's steps since the last pass.
Task<void> collectSteps(UIViewRef webView) {
  GlobalVars::sharedInstance().set_currentWebView(webView);
  keepForSender(co_await WebView().callJavaScriptFunction(webView, "startRecording()"));
}

constinit std::atomic<void (*)()> sendPendingSteps = nullptr;

// What waits for the sender came before these steps, and they would replace the page's among it.
Task<void> collectStepsUntilNow() {
  const UIViewRef webView = GlobalVars::sharedInstance()._currentWebView();
  if (!webView || asWebView(webView)->isLoading()) co_return;
  const std::string steps =
      co_await WebView().callJavaScriptFunction(webView, "recordedUntilNow()");
  if (steps.empty()) co_return;
  if (const auto send = sendPendingSteps.load()) send();
  keepForSender(steps);
}

constexpr const char* kOwnActs = "tarniOwnActs()";

// The web views that have had the scripts, and whose acts they were told of.
struct Recorders {
  std::vector<platform::UIViewWeakRef> webViews;
  bool areOwnActs = false;
  std::chrono::steady_clock::time_point lastOwnAct;

  static Recorders& shared() {
    static auto* const recorders = new Recorders;
    return *recorders;
  }
  void add(const UIViewRef& webView) {
    std::erase_if(webViews, [&webView](const platform::UIViewWeakRef& known) {
      const UIViewRef view = known.lock();
      return !view || view == webView;
    });
    webViews.emplace_back(webView);
  }
};

// A page that loads gets its scripts later, and is told then.
Task<void> tellOfActs(platform::UIViewWeakRef recorder, std::string call) {
  try {
    const UIViewRef webView = recorder.lock();
    if (!webView || asWebView(webView)->isLoading()) co_return;
    co_await WebView().callJavaScriptFunctionWithoutOutPut(webView, call);
  } catch (...) {
    platform::logFailure("The page has not heard whose acts follow");
  }
}

Task<void> injectScripts(UIViewRef webView) {
  WebView bridge;
  co_await bridge.injectJSFile(webView, "preCheck.js");
  const std::string isLoaded = co_await bridge.callJavaScriptFunction(webView, "IsJqueryLoaded()");
  if (isLoaded == "False") co_await bridge.injectJSFile(webView, "jquery.js");
  for (const char* file : {"TARNI_bililiteRange.js", "TARNI_sendkeys.js", "xpathbuilder.js",
                           "hybridrecorder.js", "hybridplayer.js"}) {
    co_await bridge.injectJSFile(webView, file);
  }
  // A page that came after the mode was told has not heard of it.
  const bool isSpying = GlobalVars::isTrue(GlobalVars::sharedInstance()._spyMode());
  if (isSpying) co_await bridge.callJavaScriptFunctionWithoutOutPut(webView, "switchtospymode()");
  Recorders::shared().add(webView);
  if (Recorders::shared().areOwnActs) co_await tellOfActs(webView, kOwnActs);
}

Task<void> recorderAndPlaybackInjection() {
  WebView bridge;
  const UIViewRef webView = bridge.getCurrentDisplayedWebView();
  if (!webView) co_return;
  const auto page = asWebView(webView);
  if (page->isLoading()) {
    platform::NSLog("*****WEBVIEW IS LOADING");
    co_return;
  }
  const bool isReady = co_await bridge.checkWebViewIsAlreadyHacked(webView);
  if (page->isSilent()) co_return;
  if (isReady) {
    co_await collectSteps(webView);
  } else {
    co_await injectScripts(webView);
  }
}

// The mode is the agent's, whether the page hears of it or not.
Task<void> tellPageOnScreen(const char* call) {
  try {
    WebView bridge;
    const UIViewRef webView = bridge.getCurrentDisplayedWebView();
    if (webView) co_await bridge.callJavaScriptFunctionWithoutOutPut(webView, call);
  } catch (...) {
    platform::logFailure("The page has not heard of the mode");
  }
}

std::atomic<bool> isPassWaiting = false;

// The right to have a pass on the main queue; given back also when the queue drops the pass.
struct Turn {
  ~Turn() { isPassWaiting = false; }
};

Task<void> runPass(std::shared_ptr<Turn> /*held until the pass ends*/) {
  try {
    co_await recorderAndPlaybackInjection();
  } catch (...) {
    // The next pass tries again.
  }
}

}  // namespace

void WebView::setSender(void (*send)()) {
  sendPendingSteps = send;
}

void WebView::performRecorderAndPlaybackInjection() {
  if (isPassWaiting.exchange(true)) return;
  const auto turn = std::make_shared<Turn>();
  platform::current().dispatch->mainQueue().asyncTask([turn] { return runPass(turn); });
}

void WebView::collectStepsBeforeTouch() {
  if (!GlobalVars::sharedInstance()._currentWebView()) return;
  platform::current().dispatch->mainQueue().asyncTask(collectStepsUntilNow);
}

Task<void> WebView::ownActsFollow() {
  if (std::exchange(Recorders::shared().areOwnActs, true)) co_return;
  const std::vector<platform::UIViewWeakRef> webViews = Recorders::shared().webViews;
  for (const auto& webView : webViews) co_await tellOfActs(webView, kOwnActs);
}

void WebView::ownActsEnd() {
  Recorders::shared().lastOwnAct = std::chrono::steady_clock::now();
}

void WebView::personActs() {
  if (!std::exchange(Recorders::shared().areOwnActs, false)) return;
  const std::chrono::duration<double, std::milli> sinceOwn =
      std::chrono::steady_clock::now() - Recorders::shared().lastOwnAct;
  const std::string call = "tarniPersonsActs(" + std::to_string(sinceOwn.count()) + ")";
  for (const auto& webView : Recorders::shared().webViews) {
    platform::spawn(tellOfActs(webView, call), nullptr);
  }
}

UIViewRef WebView::getCurrentDisplayedWebView() {
  return UIViewsManager().firstForPlayer(
      UIViewFinder::getCurrentWindow(), [](const UIViewRef& view) {
        return view->getClass()->lowercaseName() == "uiwebview" ||
               view->isKindOfClass(platform::uikit::WKWebView);
      });
}

Task<bool> WebView::checkWebViewIsAlreadyHacked(UIViewRef webView) {
  const std::string answer = co_await callJavaScriptFunction(webView, "IsInjectionDone()");
  co_return answer == "DONE";
}

Task<void> WebView::injectJSFile(UIViewRef webView, std::string fileName) {
  const std::string script = co_await getRemoteFileContent(fileName);
  co_await callJavaScriptFunctionWithoutOutPut(webView, script);
}

Task<std::string> WebView::getRemoteFileContent(std::string fileName) {
  platform::NSURLLoader* const loader = platform::current().urlLoader;
  if (!loader) co_return "";
  const std::string address = REMOTE_CDN_URL + "/" + fileName;
  std::optional<std::string> content = co_await loader->stringWithContentsOfURL(address);
  co_return content.value_or("");
}

Task<std::string> WebView::callJavaScriptFunction(UIViewRef webView, std::string call) {
  co_return co_await asWebView(webView)->stringByEvaluatingJavaScriptFromString(call);
}

Task<void> WebView::callJavaScriptFunctionWithoutOutPut(UIViewRef webView, std::string call) {
  co_await asWebView(webView)->stringByEvaluatingJavaScriptFromString(call);
}

Task<void> WebView::switchToSpyMode() {
  co_await tellPageOnScreen("switchtospymode()");
}

Task<void> WebView::switchToRecorderMode() {
  co_await tellPageOnScreen("switchtorecordermode()");
}

}  // namespace tarni
