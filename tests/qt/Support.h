// What the tests of the views share. Everything runs on the GUI thread.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QWidget>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "backends/qt/views/ViewRegistry.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "tests/support/Complete.h"

namespace tarni::test {

namespace uikit = platform::uikit;
using platform::as;
using platform::CGPoint;
using platform::CGRect;
using platform::CGSize;
using platform::UIViewRef;

inline UIViewRef viewOf(QWidget& widget) { return qt::viewOfWidget(&widget); }

inline std::string classOf(const UIViewRef& view) { return view->getClass()->name(); }

// Shows the window and lets it lay itself out.
inline void show(QWidget& window) {
  window.show();
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

// Runs the program's loop until the work has ended.
inline void finish(platform::Task<void> work) {
  bool ended = false;
  std::exception_ptr failure;
  platform::spawn(std::move(work), [&](const std::exception_ptr& thrown) {
    failure = thrown;
    ended = true;
  });
  while (!ended) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  if (failure) std::rethrow_exception(failure);
}

inline platform::UIImageRef pictureOf(const UIViewRef& view) {
  std::optional<platform::UIImageRef> picture;
  finish(storeResult(view->drawViewHierarchy(), picture));
  return picture.value();
}

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
