// Finger: a person's finger on the screen. Its events reach the application the way those of a
// touch screen do, through "sendEvent:", so that whoever watches the application sees them. Main
// thread.
//
//   environment.finger().tap(*button);
#pragma once

#include <vector>

#include "backends/headless/View.h"
#include "platform/UIKit/InputObserver.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::headless {

class Application;

// What a touch that is in this phase now is to the observer of input.
platform::InputEvent inputOf(const platform::UITouchRef& touch, platform::UITouchPhase phase);

class Finger {
 public:
  explicit Finger(Application& application) : application_(application) {}

  // Points are in window coordinates; a finger that is down already is lifted first.
  void down(Window& window, platform::CGPoint point);
  void moveTo(platform::CGPoint point);
  void up();
  // True from `down` to `up`.
  bool isDown() const { return touch_ != nullptr; }

  // The middle of a view that stands in a window; otherwise nothing happens.
  void tap(const View& view);
  // A point in the view's own coordinates.
  void tap(const View& view, platform::CGPoint point);
  // In steps of at most ten points, from and to points in the view's own coordinates.
  void drag(const View& view, platform::CGPoint from, platform::CGPoint to);

 private:
  void send(platform::UITouchPhase phase);

  Application& application_;
  platform::UITouchRef touch_;
};

}  // namespace tarni::headless
