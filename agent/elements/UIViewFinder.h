// UIViewFinder: what playback commands ask of the application's views, and the two command tables.
// Made fresh for each use; main thread.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "agent/commands/FunctionCallObject.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class UIViewFinder {
 public:
  // The key window; null when there is none.
  platform::UIWindowRef getCurrentWindow() const;

  // The views of the current window, hidden ones included, whose class name is `type` in any case;
  // all for the empty type. Parents come before children, siblings back to front.
  std::vector<platform::UIViewRef> getAllUIViewsAccordingToViewType(const std::string& type) const;

  // Waits while a view controller is about to appear, in steps of 0.1 s, at most 10 s.
  platform::Task<void> waitForViewControllerLoaded() const;

  // Scrolls the view down by `amount` points, once for each test that it passes: a class name with
  // "scrollview" in it, a collection view, a table view. The horizontal offset becomes 0.
  platform::Task<void> swipeBy(float amount, platform::UIViewRef view) const;
  // The same back to the top left corner; the amount is not read.
  platform::Task<void> swipeReset(float amount, platform::UIViewRef view) const;

  // Runs the native command; the array of its answer entries. Throws what the platform raises.
  platform::Task<nlohmann::ordered_json> parseFunctionCallObject(FunctionCallObject call) const;
  // Runs the command in the displayed web view; the text that the script gave, or null when there
  // is none (no web view, no such command, a command without result).
  platform::Task<std::optional<std::string>> parseFunctionCallObjectForWebView(
      FunctionCallObject call) const;
};

}  // namespace tarni
