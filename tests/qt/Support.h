// What the tests of the views share. Everything runs on the GUI thread.
#pragma once

#include <string>
#include <vector>

#include "platform/UIKit/UIControls.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {

namespace uikit = platform::uikit;
using platform::as;
using platform::CGPoint;
using platform::CGRect;
using platform::CGSize;
using platform::UIViewRef;

inline UIViewRef viewOf(QWidget& widget) { return qt::viewOfWidget(&widget); }

inline std::string classOf(const UIViewRef& view) { return view->getClass()->name(); }

inline std::vector<UIViewRef> subviewsOf(const UIViewRef& view) {
  const auto views = view->subviews();
  return {views.begin(), views.end()};
}

// The subviews of that class, in order.
inline std::vector<UIViewRef> subviewsOf(const UIViewRef& view, const std::string& className) {
  std::vector<UIViewRef> found;
  for (const UIViewRef& child : view->subviews()) {
    if (classOf(child) == className) found.push_back(child);
  }
  return found;
}

inline CGPoint middleInWindow(const UIViewRef& view) {
  const CGRect bounds = view->bounds();
  return view->convertPointToWindow({bounds.midX(), bounds.midY()});
}

}  // namespace tarni::test
