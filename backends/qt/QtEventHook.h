// QtEventHook: sees every event of the window system before Qt processes it, and shows those of
// fingers (the left button of a mouse is one), keys and wheels to "sendEvent:" on their way.
//
// A touch keeps the view and the window on which it began, as in UIKit. GUI thread, inside the
// program's own event loop: nothing is kept from the program but a touch that was replaced by a
// synthesized one while it was shown.
#pragma once

#include <qpa/qwindowsysteminterface_p.h>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QWindow>
#include <map>
#include <memory>
#include <vector>

#include "backends/posix/TouchRecord.h"
#include "backends/qt/QtEventDispatch.h"
#include "backends/qt/QtTouchesEvent.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::qt {

class QtEventHook : public QWindowSystemEventHandler {
 public:
  // `touchesEvent` is the application's shared one. Takes the one place that Qt has for such a
  // hook, until the application object goes; when somebody else has it, only a log line is made:
  // nothing is recorded then.
  QtEventHook(QtEventDispatch& dispatch, const QtTouchesEvent& touchesEvent,
              platform::SystemLog& log);

  bool sendEvent(QWindowSystemInterfacePrivate::WindowSystemEvent* event) override;

 private:
  using NativeEvent = QWindowSystemInterfacePrivate::WindowSystemEvent;
  using MouseEvent = QWindowSystemInterfacePrivate::MouseEvent;
  using TouchEvent = QWindowSystemInterfacePrivate::TouchEvent;
  using ExposeEvent = QWindowSystemInterfacePrivate::ExposeEvent;

  struct Finger {
    std::shared_ptr<posix::TouchRecord> touch;
    QPointF origin;  // of the touch's window on the screen, when the touch began
  };

  static Finger beginFinger(QWindow* window, QPointF local, QPointF global);
  static void moveFinger(const Finger& finger, QPointF global, platform::UITouchPhase phase);

  bool sendMouse(MouseEvent* event);
  bool followMouse(const MouseEvent& event);
  bool sendTouch(TouchEvent* event);
  void followTouches(const TouchEvent& event);
  void cancelTouches();
  bool sendExpose(ExposeEvent* event);
  bool isFirstExposure(const ExposeEvent& event);
  bool show(platform::UIEvent& event, NativeEvent* native);
  bool showFingers(NativeEvent* native);

  QtEventDispatch& dispatch_;
  const QtTouchesEvent& touchesEvent_;
  posix::EventRecord fingerEvent_{platform::UIEventType::Touches};
  posix::EventRecord keyEvent_{platform::UIEventType::Presses};
  posix::EventRecord wheelEvent_{platform::UIEventType::Scroll};
  Finger mouse_;                   // without a touch while the left button is up
  std::map<int, Finger> fingers_;  // on touch screens, by point
  bool isSwallowing_ = false;      // until the fingers are up
  std::vector<QPointer<QWindow>> exposed_;
};

}  // namespace tarni::qt
