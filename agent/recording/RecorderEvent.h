// RecorderEvent: looks at one event before the application gets it and decides whether its touch
// becomes a recorded step. It never consumes the event.
//
// Main thread, inside the application's event dispatch. A fresh one serves each event.
#pragma once

#include "platform/UIKit/UIEvent.h"

namespace tarni {

class RecorderEvent {
 public:
  void handleEvent(platform::UIEvent& event);

  // The touch is the agent's own: nothing of it becomes a step.
  static void leaveOut(const platform::UITouchRef& touch);

  // The phase handlers.
  void touchesBeganOnView(const platform::UITouchRef& touch, platform::UIEvent& event);
  void touchesMovedOnView(const platform::UITouchRef& touch, platform::UIEvent& event);
  void touchesEndedOnView(const platform::UITouchRef& touch, platform::UIEvent& event);

  // True for views whose value changes only when the finger lifts.
  bool IsViewIsNotOfEventType(const platform::UIViewRef& view) const;

  // Queues the touch on `view` at a point in its coordinates; a touch on a text field also makes
  // the step for the text typed into the field before. A null view is not recorded.
  void submitViewForRecording(const platform::UIViewRef& view, platform::UIEvent& event, double x,
                              double y);

 private:
  double distanceFromInitialTouchPoint(platform::CGPoint point) const;

  // Of the event at hand. Kept: since a fresh object serves each event, a touch that has moved ends
  // like one that has not, and both are recorded.
  platform::CGPoint initialTouchPoint_;
  bool isScrolling_ = false;
  bool isVerticalScroll_ = false;
};

}  // namespace tarni
