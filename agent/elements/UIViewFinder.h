// UIViewFinder: what playback asks of the application's views. Main thread. Its two command tables
// stand in agent/commands (NativeCommands.h, WebViewCommands.h).
#pragma once

#include <string>
#include <vector>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::UIViewFinder {

// The key window; null when there is none.
platform::UIWindowRef getCurrentWindow();

// The views of the current window, hidden ones included, whose class name is `type` in any case;
// all for the empty type. Parents come before children, siblings back to front.
std::vector<platform::UIViewRef> getAllUIViewsAccordingToViewType(const std::string& type);

// Waits while a view controller is about to appear, in steps of 0.1 s, at most 10 s.
platform::Task<void> waitForViewControllerLoaded();

// Scrolls the view down by `amount` points, once for each test that it passes: a class name with
// "scrollview" in it, a collection view, a table view. The horizontal offset becomes 0.
platform::Task<void> swipeBy(float amount, platform::UIViewRef view);
// The same back to the top left corner. The amount is not read, and a view that
// passes two tests scrolls twice. Kept: host tools rely on it.
platform::Task<void> swipeReset(float amount, platform::UIViewRef view);

}  // namespace tarni::UIViewFinder
