// A screen that fingers touch as an agent's do.
#pragma once

#include "platform/Task.h"
#include "tests/support/Screen.h"

namespace tarni::headless::test {

using platform::CGPoint;
using platform::CGRect;
using platform::UITouchPhase;
using tarni::test::complete;

class TouchScreen : public tarni::test::Screen {
 protected:
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
};

inline void expectNear(CGPoint actual, CGPoint expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

}  // namespace tarni::headless::test
