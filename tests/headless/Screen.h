// A window of the in-memory UIKit for one test. Waits take no time.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "platform/Task.h"
#include "tests/support/Complete.h"

namespace tarni::headless::test {

using platform::CGPoint;
using platform::CGRect;
using platform::UITouchPhase;
using tarni::test::complete;

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
    complete(environment.application().sendEvent(event));
  }
  void moveTo(const platform::UITouchRef& touch, CGPoint point) {
    touch->_setLocationInWindow(point, false);
    send(UITouchPhase::Moved, {touch});
  }

  Environment environment;
  WindowRef window;
};

inline void expectNear(CGPoint actual, CGPoint expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

}  // namespace tarni::headless::test
