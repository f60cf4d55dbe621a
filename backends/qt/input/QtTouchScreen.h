// QtTouchScreen: the touch screen that the synthesized touches come from. Registered with the first
// touch, since programs ask which devices there are. GUI thread.
//
// Events are processed by Qt within the call, which may enter a nested loop of the program.
#pragma once

#include <QtCore/QPointF>
#include <vector>

QT_BEGIN_NAMESPACE
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

class QtTouchScreen {
 public:
  enum class State { Pressed, Moved, Stationary, Released };

  struct Point {
    int identifier = 0;
    State state = State::Stationary;
    QPointF position;  // in the window, in points
  };

  // All fingers that are on the window, and those that leave it.
  static void touch(QWindow& window, const std::vector<Point>& points);
  // The left button's mouse event instead.
  static void mouse(QWindow& window, const Point& point);

  // Whether an event of the window system comes from this touch screen; `device` is its device.
  static bool isOwn(const void* device);
};

}  // namespace tarni::qt
