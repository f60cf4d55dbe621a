#include "agent/elements/UIViewFinder.h"

#include <nlohmann/json.hpp>

#include "agent/commands/NativeCommands.h"
#include "agent/commands/WebViewCommands.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewsManager.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni {

namespace uikit = platform::uikit;
using platform::CGPoint;
using platform::Task;
using platform::UIViewRef;

namespace {

constexpr double kLoadingStepSeconds = 0.1;
constexpr int kLoadingSteps = 100;

// How often a view scrolls for one swipe: once for each test that it passes.
int scrollsForSwipe(const UIViewRef& view) {
  const bool isCalledScrollView =
      view->getClass()->lowercaseName().find("scrollview") != std::string::npos;
  return int{isCalledScrollView} + int{view->isKindOfClass(uikit::UICollectionView)} +
         int{view->isKindOfClass(uikit::UITableView)};
}

}  // namespace

platform::UIWindowRef UIViewFinder::getCurrentWindow() const {
  return platform::current().application->keyWindow();
}

std::vector<UIViewRef> UIViewFinder::getAllUIViewsAccordingToViewType(
    const std::string& type) const {
  return UIViewsManager().viewsForPlayerOfType(getCurrentWindow(), type);
}

Task<void> UIViewFinder::waitForViewControllerLoaded() const {
  platform::UIApplication& application = *platform::current().application;
  for (int step = 0; step < kLoadingSteps; ++step) {
    if (GlobalVars::sharedInstance()._viewControllerLoaded() != "LOADING") co_return;
    co_await application.runLoopRunInMode(platform::kCFRunLoopDefaultMode, kLoadingStepSeconds,
                                          false);
  }
}

Task<void> UIViewFinder::swipeBy(float amount, UIViewRef view) const {
  const auto scrollView = platform::as<platform::UIScrollView>(view);
  if (!scrollView) co_return;
  for (int scrolls = scrollsForSwipe(view); scrolls > 0; --scrolls) {
    const CGPoint target{0, scrollView->contentOffset().y + amount};
    co_await scrollView->setContentOffset(target, true);
  }
}

Task<void> UIViewFinder::swipeReset(float, UIViewRef view) const {
  const auto scrollView = platform::as<platform::UIScrollView>(view);
  if (!scrollView) co_return;
  for (int scrolls = scrollsForSwipe(view); scrolls > 0; --scrolls) {
    const CGPoint top;
    co_await scrollView->setContentOffset(top, true);
  }
}

Task<nlohmann::ordered_json> UIViewFinder::parseFunctionCallObject(FunctionCallObject call) const {
  PlaybackCommand command(call);
  co_return co_await runNativeCommand(std::move(command));
}

Task<std::optional<std::string>> UIViewFinder::parseFunctionCallObjectForWebView(
    FunctionCallObject call) const {
  PlaybackCommand command(call);
  co_return co_await runWebViewCommand(std::move(command));
}

}  // namespace tarni
