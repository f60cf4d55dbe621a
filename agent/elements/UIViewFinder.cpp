#include "agent/elements/UIViewFinder.h"

#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewsManager.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::UIViewFinder {

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

platform::UIWindowRef getCurrentWindow() {
  return platform::current().application->keyWindow();
}

std::vector<UIViewRef> getAllUIViewsAccordingToViewType(const std::string& type) {
  return UIViewsManager().viewsForPlayerOfType(getCurrentWindow(), type);
}

Task<void> waitForViewControllerLoaded() {
  platform::UIApplication& application = *platform::current().application;
  for (int step = 0; step < kLoadingSteps; ++step) {
    if (GlobalVars::sharedInstance()._viewControllerLoaded() != "LOADING") co_return;
    co_await application.runLoopRunInMode(platform::kCFRunLoopDefaultMode, kLoadingStepSeconds,
                                          false);
  }
}

Task<void> swipeBy(float amount, UIViewRef view) {
  const auto scrollView = platform::as<platform::UIScrollView>(view);
  if (!scrollView) co_return;
  for (int scrolls = scrollsForSwipe(view); scrolls > 0; --scrolls) {
    const CGPoint target{0, scrollView->contentOffset().y + amount};
    co_await scrollView->setContentOffset(target, true);
  }
}

Task<void> swipeReset(float, UIViewRef view) {
  const auto scrollView = platform::as<platform::UIScrollView>(view);
  if (!scrollView) co_return;
  for (int scrolls = scrollsForSwipe(view); scrolls > 0; --scrolls) {
    const CGPoint top;
    co_await scrollView->setContentOffset(top, true);
  }
}

}  // namespace tarni::UIViewFinder
