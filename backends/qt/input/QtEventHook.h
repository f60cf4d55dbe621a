// QtEventHook: sees every event of the window system before Qt processes it, and shows those of
// fingers (the left button of a mouse is one), keys and wheels to "sendEvent:" on their way.
//
// A touch keeps the view and the window on which it began, as in UIKit. A menu that opens because
// the mouse rests on its entry, which no finger can do, is shown as a tap on that entry. GUI
// thread, inside the program's own event loop: nothing is kept from the program but a touch that
// was replaced by a synthesized one while it was shown.
#pragma once

#include <qpa/qwindowsysteminterface_p.h>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QWindow>
#include <map>
#include <memory>
#include <vector>

#include "backends/posix/TouchRecord.h"
#include "backends/qt/input/QtEventDispatch.h"
#include "backends/qt/input/QtInputWatch.h"
#include "backends/qt/input/QtTouchesEvent.h"
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

  // A menu has opened from that entry. Unless the entry was touched, or a key or the agent opened
  // it, the mouse rests there, and the entry is shown as tapped.
  void menuOpened(const platform::UIViewRef& opener);
  // What happens next is the doing of the agent's own devices, whose events do not come by here.
  void inputOfAgent() { pointing_ = Pointing::None; }
  // An event of these devices while a person has them in hand. It is observed, and that is all: to
  // "sendEvent:" they are the agent's.
  void inputByDevices(const QWindowSystemInterfacePrivate::WindowSystemEvent& event);
  QtInputWatch& watch() { return watch_; }

 private:
  using NativeEvent = QWindowSystemInterfacePrivate::WindowSystemEvent;
  using MouseEvent = QWindowSystemInterfacePrivate::MouseEvent;
  using TouchEvent = QWindowSystemInterfacePrivate::TouchEvent;
  using ExposeEvent = QWindowSystemInterfacePrivate::ExposeEvent;

  struct Finger {
    std::shared_ptr<posix::TouchRecord> touch;
    QPointF origin;  // of the touch's window on the screen, when the touch began
  };

  Finger beginFinger(QWindow* window, QPointF local, QPointF global);
  static void moveFinger(const Finger& finger, QPointF global, platform::UITouchPhase phase);

  bool sendMouse(MouseEvent* event);
  bool followMouse(const MouseEvent& event);
  bool sendTouch(TouchEvent* event);
  void followTouches(const TouchEvent& event);
  void cancelTouches();
  bool sendExpose(ExposeEvent* event);
  void followMenu(const ExposeEvent& event);
  bool isFirstExposure(const ExposeEvent& event);
  bool show(platform::UIEvent& event, NativeEvent* native);
  bool showFingers(NativeEvent* native);

  QtInputWatch watch_;
  QtEventDispatch& dispatch_;
  const QtTouchesEvent& touchesEvent_;
  posix::EventRecord fingerEvent_{platform::UIEventType::Touches};
  posix::EventRecord keyEvent_{platform::UIEventType::Presses};
  posix::EventRecord wheelEvent_{platform::UIEventType::Scroll};
  posix::EventRecord pointingEvent_{platform::UIEventType::Touches};
  Finger mouse_;  // without a touch while the left button is up
  platform::UIViewWeakRef lastTouched_;
  // What the last input came from, if that is a mouse of a person's.
  enum class Pointing { None, Mouse, Devices } pointing_ = Pointing::Mouse;
  std::map<int, Finger> fingers_;  // on touch screens, by point
  bool isSwallowing_ = false;      // until the fingers are up
  std::vector<QPointer<QWindow>> exposed_;
  QPointer<QWindow> menu_;  // the one that was opened last
};

// The same for a menu that no window is made for. Does nothing while there is no hook.
void noteMenuOpened(const platform::UIViewRef& opener);
// The same for the agent's devices.
void noteInputOfAgent();
void showPersonsInput(const QWindowSystemInterfacePrivate::WindowSystemEvent& event);
// From now on the observer is shown what a person does; null ends that. False while there is no
// hook.
bool observeInput(platform::InputObserver* observer);

}  // namespace tarni::qt
