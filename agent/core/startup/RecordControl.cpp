#include "agent/core/startup/RecordControl.h"

#include <chrono>
#include <future>

#include "agent/Queue/ElementsQueue.h"
#include "agent/WebView/WebView.h"
#include "agent/core/startup/TcpChannel.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/recording/RecorderWorker.h"
#include "agent/recording/TypedText.h"
#include "agent/session/Channel.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr double kTickInterval = 0.2;  // seconds
constexpr auto kTimeToEnd = std::chrono::milliseconds(200);

// Gives new views their identities. False when there is no key window. Main thread.
bool walkKeyWindow() {
  const platform::UIWindowRef window = platform::current().application->keyWindow();
  if (!window) return false;
  GlobalVars::sharedInstance().set_uiWindow(window);
  UIViewsManager manager;
  manager.goThroughAllViews(window);
  TypedText::sharedInstance().follow();
  return true;
}

// What a tick found, which holds as long as the main thread does nothing else.
struct Look {
  bool hasWindow = false;
  bool mayHavePage = true;
  std::optional<std::uint64_t> workCount;  // at its end; null where nobody counts

  // A page goes on by itself.
  bool holds() const {
    return workCount && !mayHavePage && workCount == platform::current().application->workCount();
  }
};

// The one that was on screen last is looked for by the pass itself.
bool mayHavePage() {
  return GlobalVars::sharedInstance()._currentWebView() || WebView().getCurrentDisplayedWebView();
}

// Main thread.
void lookAround(Look& look) {
  const bool isPlayback = GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted());
  look.hasWindow = isPlayback || walkKeyWindow();
  look.mayHavePage = look.hasWindow && mayHavePage();
  look.workCount = platform::current().application->workCount();
}

// Looks around, unless the last look still holds: a program that does nothing is not woken for it.
// False once the application's event loop is gone.
bool tick(Look& look) {
  if (!look.holds()) {
    look = {};
    if (!platform::current().dispatch->mainQueue().sync([&] { lookAround(look); })) return false;
  }
  if (!look.hasWindow) {
    platform::NSLog("WINDOW IS NULL");
  } else if (look.mayHavePage) {
    WebView().performRecorderAndPlaybackInjection();
  }
  return true;
}

// What lower rooms call without knowing whom.
void handIn() {
  ElementsQueue::sharedInstance().setWorker([] { return RecorderWorker::sharedInstance().run(); });
  WebView::setSender(TcpChannel::sendPendingSteps);
}

void arm(Look last);

void tickAndRearm(Look look) {
  bool goesOn = true;
  try {
    goesOn = tick(look);
  } catch (...) {
    platform::logFailure("Polling hook");
  }
  if (goesOn) arm(look);
}

void arm(Look last) {
  platform::Dispatch& dispatch = *platform::current().dispatch;
  dispatch.after(kTickInterval, dispatch.backgroundQueue(), [last] { tickAndRearm(last); });
}

}  // namespace

void RecordControl::load() {
  handIn();
  ElementsQueue::sharedInstance().startRecorderActionThread();
  TcpChannel().start();
  GlobalVars::sharedInstance().set_spyMode("false");
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  dispatchHook();
}

void RecordControl::dispatchHook() {
  arm({});
}

// A tap that ends the application leaves the worker and the sender loop no time for its step.
void RecordControl::applicationWillTerminate() noexcept {
  const auto deadline = std::chrono::steady_clock::now() + kTimeToEnd;
  const std::future<void> clientsTold = session::finish();
  try {
    if (!GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted())) {
      RecorderWorker::sharedInstance().finish(deadline);
      TcpChannel::sendLastSteps(deadline);
    }
    if (clientsTold.valid()) clientsTold.wait_until(deadline);
  } catch (...) {
    platform::logFailure("Sending the last steps failed");
  }
}

}  // namespace tarni
