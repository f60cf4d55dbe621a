// The view hierarchy as text that people read: a line a view, indented by depth, with class, place,
// text and state. Main thread.
#pragma once

#include <string>

#include "platform/UIKit/UIView.h"

namespace tarni::Diagnostics {

// The view and all below it; empty for null. Lines end in a line feed.
std::string viewHierarchyText(const platform::UIViewRef& root);

// Logs all windows, back to front, a log line a view.
void printViewHierarchy();

}  // namespace tarni::Diagnostics
