// A window of the in-memory UIKit for one test. Waits take no time.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <optional>
#include <utility>

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "platform/Task.h"

namespace tarni::headless::test {

using platform::CGPoint;
using platform::CGRect;
using platform::UITouchPhase;

class Screen : public testing::Test {
 protected:
  Screen() {
    environment.install();
    environment.useVirtualClock();
    window = environment.makeWindow();
  }

  ViewRef box(const CGRect& frame) { return box(frame, *window); }
  static ViewRef box(const CGRect& frame, View& parent) {
    return build<View>().frame(frame).in(parent);
  }

  // Runs a task that must not suspend; what leaves it is thrown again.
  static void await(platform::Task<void> task) {
    bool hasEnded = false;
    std::exception_ptr failure;
    platform::spawn(std::move(task), [&](const std::exception_ptr& thrown) {
      hasEnded = true;
      failure = thrown;
    });
    ASSERT_TRUE(hasEnded);
    if (failure) std::rethrow_exception(failure);
  }
  template <typename T>
  static T await(platform::Task<T> task) {
    std::optional<T> result;
    await(store(std::move(task), result));
    return std::move(result).value();
  }

  // A touch as an agent makes it, not yet sent.
  platform::UITouchRef touchAt(CGPoint point) {
    auto touch = environment.application().makeTouch();
    touch->setWindow(window);
    touch->_setLocationInWindow(point, true);
    touch->setView(window->hitTest(point));
    return touch;
  }
  // Sends touches in a phase, in one event.
  void send(UITouchPhase phase, const std::vector<platform::UITouchRef>& touches) {
    platform::UIEvent& event = environment.application()._touchesEvent();
    event._clearTouches();
    for (const auto& touch : touches) {
      touch->setPhase(phase);
      touch->setTimestamp(environment.processInfo().systemUptime());
      event._addTouch(touch, false);
    }
    await(environment.application().sendEvent(event));
  }
  void moveTo(const platform::UITouchRef& touch, CGPoint point) {
    touch->_setLocationInWindow(point, false);
    send(UITouchPhase::Moved, {touch});
  }

  Environment environment;
  WindowRef window;

 private:
  template <typename T>
  static platform::Task<void> store(platform::Task<T> task, std::optional<T>& result) {
    result = co_await task;
  }
};

inline void expectNear(CGPoint actual, CGPoint expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

}  // namespace tarni::headless::test
