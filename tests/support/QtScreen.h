// What the tests of a Qt program share. Everything runs on the GUI thread; work that waits for the
// program is a coroutine, and `finish` runs the program's loop until it has ended.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "tests/support/Complete.h"

namespace tarni::test {

using platform::Task;

// Runs the program's loop until `condition` holds; false after ten seconds.
inline bool runUntil(const std::function<bool()>& condition) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > 10000) return false;
    QEventLoop loop;
    QTimer::singleShot(1, &loop, &QEventLoop::quit);
    loop.exec();
  }
  return true;
}

inline void finish(Task<void> work) {
  bool hasEnded = false;
  std::exception_ptr failure;
  platform::spawn(std::move(work), [&](std::exception_ptr thrown) {
    failure = std::move(thrown);
    hasEnded = true;
  });
  ASSERT_TRUE(runUntil([&] { return hasEnded; })) << "the work never ended";
  if (failure) std::rethrow_exception(failure);
}

inline platform::UIImageRef pictureOf(const platform::UIViewRef& view) {
  std::optional<platform::UIImageRef> picture;
  finish(storeResult(view->drawViewHierarchy(), picture));
  return picture.value();
}

inline Task<void> pause(double seconds) {
  co_await platform::current().application->runLoopRunInMode(platform::kCFRunLoopDefaultMode,
                                                             seconds, false);
}

inline void show(QWidget& window) {
  window.show();
  ASSERT_TRUE(runUntil([&] { return window.windowHandle()->isExposed(); }));
}

inline Task<void> tapAt(QWidget* widget, QPoint point) {
  const QPoint inWindow = widget->mapTo(widget->window(), point);
  return KIFAdditions::tapAtPoint(qt::viewOfWidget(widget->window()),
                                  {double(inWindow.x()), double(inWindow.y())});
}

inline Task<void> tap(QWidget* widget) {
  return tapAt(widget, widget->rect().center());
}

inline Task<void> drag(QWidget* widget, QPoint from, QPoint to) {
  const QPoint start = widget->mapTo(widget->window(), from);
  const QPoint end = widget->mapTo(widget->window(), to);
  return KIFAdditions::dragFromPoint(qt::viewOfWidget(widget->window()),
                                     {double(start.x()), double(start.y())},
                                     {double(end.x()), double(end.y())});
}

// Hears of the hooks of appearance while it lives.
class Appearances {
 public:
  Appearances() {
    for (const char* const selector : kSelectors) {
      replace(selector, [this, selector](const auto&) { heard.push_back(selector[4]); });
    }
  }
  Appearances(const Appearances&) = delete;
  ~Appearances() {
    for (const char* const selector : kSelectors) replace(selector, [](const auto&) {});
  }

  std::string heard;  // W and D, in order

 private:
  static constexpr const char* kSelectors[] = {"viewWillAppear:", "viewDidAppear:"};

  static void replace(const char* selector, platform::Implementation hook) {
    platform::current().runtime->class_replaceMethod(platform::uikit::UIViewController, selector,
                                                     std::move(hook), "v@:B");
  }
};

// A window with a page that widgets are added to, one below the other.
class PageTest : public testing::Test {
 protected:
  template <typename Widget>
  Widget* add(Widget* widget) {
    layout_->addWidget(widget);
    return widget;
  }

  QMainWindow window_;
  QWidget* page_ = [this] {
    auto* const page = new QWidget;
    window_.setCentralWidget(page);
    return page;
  }();
  QVBoxLayout* layout_ = new QVBoxLayout(page_);
};

}  // namespace tarni::test
