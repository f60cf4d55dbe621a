// QtFingers: puts synthesized touches on the program's windows, as events of a touch screen. What
// does not take a touch gets the mouse events that Qt makes of it.
//
// As in a UIScrollView, a touch inside an area that can scroll is held back until it is known not
// to be the start of a drag; a drag scrolls the area.
//
// GUI thread. Delivering may enter a nested loop of the program, in which further events arrive.
#pragma once

#include <QtGui/QWindow>
#include <deque>
#include <optional>
#include <vector>

#include "backends/qt/input/QtScrollDrag.h"
#include "backends/qt/input/QtTouchScreen.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::qt {

class QtFingers {
 public:
  // Gives the program what the event's touches mean in their present phases. A touch that hit no
  // view reaches nobody.
  void deliver(const platform::UIEvent& event);

  // One event can mean two things for the program (press and release of a tap that was held back).
  // The second is left for an input event of its own, since the program may open a dialog in the
  // first.
  bool hasNextStep() const { return !nextSteps_.empty(); }
  void deliverNextStep();

 private:
  using State = QtTouchScreen::State;

  struct Finger {
    std::weak_ptr<platform::UITouch> touch;
    int identifier = 0;
    QPointer<QWindow> window;
    QPointF origin;  // of `window`, in the top-level window
    QPointF start;   // both in `window`
    QPointF position;
    bool isDown = false;
    bool isMouse = false;     // for what answers to the mouse alone
    ScrollAreas scrollAreas;  // not empty while the touch is held back
    std::optional<QtScrollDrag> drag;
  };

  // What one finger does next.
  struct Action {
    int identifier;
    State state;
  };
  using Step = std::vector<Action>;
  // What one window gets in a step.
  struct Batch {
    QPointer<QWindow> window;
    bool isForMouse = false;
    std::vector<QtTouchScreen::Point> points;
  };

  std::vector<State> statesAfter(const platform::UITouchRef& touch, Finger& finger);
  std::vector<State> statesAfterMove(Finger& finger);
  Finger* begin(const platform::UITouchRef& touch, bool isAlone);
  Finger* find(const platform::UITouchRef& touch);
  Finger* find(int identifier);
  int freeIdentifier();
  void liftAbandoned();
  void perform(const Step& step);
  static void addPoint(std::vector<Batch>& batches, const Finger& finger, State state);
  void addRestingFingers(std::vector<Batch>& batches, const Step& step) const;

  std::vector<Finger> fingers_;
  std::deque<Step> nextSteps_;
};

}  // namespace tarni::qt
