#include "backends/qt/input/QtEventHook.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "backends/qt/input/QtInputWatch.h"
#include "backends/qt/input/QtSpot.h"
#include "backends/qt/input/QtTouchScreen.h"
#include "backends/qt/program/InputQueue.h"
#include "backends/qt/views/QtPopup.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::qt {
namespace {

using Interface = QWindowSystemInterfacePrivate;
using platform::UITouchPhase;

QtEventHook* installed = nullptr;

void uninstall() {
  Interface::removeWindowSystemEventhandler(installed);
  installed = nullptr;
  serveInputQueue(false);
}

#if QT_VERSION_MAJOR >= 6
QPointF globalPosition(const QEventPoint& point) {
  return point.globalPosition();
}
bool isPressed(const QEventPoint& point) {
  return point.state() == QEventPoint::State::Pressed;
}
bool isReleased(const QEventPoint& point) {
  return point.state() == QEventPoint::State::Released;
}
bool isStationary(const QEventPoint& point) {
  return point.state() == QEventPoint::State::Stationary;
}
#else
using QEventPoint = QTouchEvent::TouchPoint;
QPointF globalPosition(const QEventPoint& point) {
  return point.screenPos();
}
bool isPressed(const QEventPoint& point) {
  return point.state() == Qt::TouchPointPressed;
}
bool isReleased(const QEventPoint& point) {
  return point.state() == Qt::TouchPointReleased;
}
bool isStationary(const QEventPoint& point) {
  return point.state() == Qt::TouchPointStationary;
}
#endif

UITouchPhase phaseOf(const QEventPoint& point) {
  if (isReleased(point)) return UITouchPhase::Ended;
  return isStationary(point) ? UITouchPhase::Stationary : UITouchPhase::Moved;
}

platform::InputKind inputOf(const QEventPoint& point) {
  if (isPressed(point)) return platform::InputKind::Press;
  return isReleased(point) ? platform::InputKind::Release : platform::InputKind::Move;
}

std::shared_ptr<posix::TouchRecord> makeTouch(const platform::UIViewRef& view,
                                              const platform::UIWindowRef& window,
                                              platform::CGPoint location) {
  auto touch = std::make_shared<posix::TouchRecord>();
  touch->setWindow(window);
  touch->setTapCount(1);
  touch->_setLocationInWindow(location, true);
  touch->setView(view);
  touch->setPhase(UITouchPhase::Began);
  touch->_setIsFirstTouchForView(true);
  touch->setIsTap(true);
  touch->setTimestamp(platform::current().processInfo->systemUptime());
  touch->setGestureView(view);
  return touch;
}

}  // namespace

void noteMenuOpened(const platform::UIViewRef& opener) {
  if (installed) installed->menuOpened(opener);
}

void noteInputOfAgent() {
  if (installed) installed->inputOfAgent();
}

void showPersonsInput(const Interface::WindowSystemEvent& event) {
  if (installed) installed->inputByDevices(event);
}

bool observeInput(platform::InputObserver* observer) {
  if (installed) installed->watch().setObserver(observer);
  return installed;
}

QtEventHook::QtEventHook(QtEventDispatch& dispatch, const QtTouchesEvent& touchesEvent,
                         platform::SystemLog& log)
    : dispatch_(dispatch), touchesEvent_(touchesEvent) {
  Interface::installWindowSystemEventHandler(this);
  if (Interface::eventHandler != this) {
    log.write("Another library of the program filters its events: nothing is recorded");
    return;
  }
  installed = this;
  serveInputQueue(true);
  qAddPostRoutine(uninstall);
}

bool QtEventHook::sendEvent(NativeEvent* event) {
  watch_.see(*event);
  switch (static_cast<int>(event->type)) {
    case Interface::Mouse:
      return sendMouse(static_cast<MouseEvent*>(event));
    case Interface::Touch:
      return sendTouch(static_cast<TouchEvent*>(event));
    case Interface::Key:
      pointing_ = Pointing::None;
      return show(keyEvent_, event);
    case Interface::Wheel:
      return show(wheelEvent_, event);
    case Interface::Expose:
      return sendExpose(static_cast<ExposeEvent*>(event));
    default:
      return runInputWork(*event) || QWindowSystemEventHandler::sendEvent(event);
  }
}

bool QtEventHook::sendMouse(MouseEvent* event) {
  fingerEvent_._clearTouches();
  pointing_ = Pointing::Mouse;
  bool isOfFinger = false;
  platform::runGuarded("mouse event", [&] { isOfFinger = followMouse(*event); });
  return isOfFinger ? showFingers(event) : QWindowSystemEventHandler::sendEvent(event);
}

// Answers whether the event is one of the finger that the left button is. Which buttons are down is
// asked of their state: older platform plug-ins name neither the button nor the kind of event.
bool QtEventHook::followMouse(const MouseEvent& event) {
  const bool isDown = event.buttons.testFlag(Qt::LeftButton);
  const bool isMove = event.buttonType == QEvent::MouseMove;
  const bool isOtherButton = event.button != Qt::NoButton && event.button != Qt::LeftButton;
  if (event.nonClientArea || isOtherButton) return false;
  if (!mouse_.touch) {
    if (!isDown || isMove) return false;
    mouse_ =
        beginFinger(event.window, event.localPos + middleOfAPixel(event.window), event.globalPos);
    fingerEvent_._addTouch(mouse_.touch, false);
    return true;
  }
  if (!isDown && isMove) {
    // The release went elsewhere, as it does after a drag and drop.
    mouse_ = {};
    return false;
  }
  moveFinger(mouse_, event.globalPos, isDown ? UITouchPhase::Moved : UITouchPhase::Ended);
  fingerEvent_._addTouch(mouse_.touch, false);
  if (!isDown) mouse_ = {};
  return true;
}

bool QtEventHook::sendTouch(TouchEvent* event) {
  if (QtTouchScreen::isOwn(event->device)) return QWindowSystemEventHandler::sendEvent(event);
  platform::runGuarded("touch event", [&] { followTouches(*event); });
  return showFingers(event);
}

void QtEventHook::followTouches(const TouchEvent& event) {
  fingerEvent_._clearTouches();
  for (const QEventPoint& point : event.points) {
    const QPointF global = globalPosition(point);
    const auto known = fingers_.find(point.id());
    const bool isFirst = fingers_.empty() || known == fingers_.begin();
    if (isFirst) watch_.seeFinger(inputOf(point), event.window, global, event.timestamp);
    if (isPressed(point) || known == fingers_.end()) {
      const QPointF local =
          event.window ? global - event.window->mapToGlobal(QPoint(0, 0)) : global;
      const Finger finger = beginFinger(event.window, local, global);
      fingers_.insert_or_assign(point.id(), finger);
      fingerEvent_._addTouch(finger.touch, false);
      continue;
    }
    moveFinger(known->second, global, phaseOf(point));
    fingerEvent_._addTouch(known->second.touch, false);
    if (isReleased(point)) fingers_.erase(known);
  }
  if (event.touchType == QEvent::TouchCancel) cancelTouches();
}

void QtEventHook::cancelTouches() {
  for (const auto& [point, finger] : fingers_) {
    finger.touch->setPhase(UITouchPhase::Cancelled);
    fingerEvent_._addTouch(finger.touch, false);
  }
  fingers_.clear();
}

QtEventHook::Finger QtEventHook::beginFinger(QWindow* window, QPointF local, QPointF global) {
  const QtSpot spot = spotAt(window, local, global);
  lastTouched_ = spot.view;
  return {makeTouch(spot.view, spot.window, spot.point), spot.origin};
}

void QtEventHook::moveFinger(const Finger& finger, QPointF global, UITouchPhase phase) {
  const QPointF location = global - finger.origin;
  finger.touch->_setLocationInWindow({location.x(), location.y()}, false);
  finger.touch->setTimestamp(platform::current().processInfo->systemUptime());
  finger.touch->setPhase(phase);
}

bool QtEventHook::sendExpose(ExposeEvent* event) {
  const bool appears = isFirstExposure(*event);
  if (appears) dispatch_.viewWillAppear();
  const bool isProcessed = QWindowSystemEventHandler::sendEvent(event);
  if (appears) dispatch_.viewDidAppear();
  platform::runGuarded("menu", [&] { followMenu(*event); });
  return isProcessed;
}

void QtEventHook::followMenu(const ExposeEvent& event) {
  if (!event.isExposed) {
    if (menu_ == event.window) menu_ = nullptr;
    return;
  }
  const QWidget* const popup = openPopup();
  if (!popup || popup->windowHandle() != event.window || menu_ == event.window) return;
  menu_ = event.window;
  menuOpened(openerOf(*popup));
}

void QtEventHook::inputByDevices(const NativeEvent& event) {
  watch_.see(event);
  if (event.type == Interface::Key) pointing_ = Pointing::None;
  if (event.type != Interface::Mouse) return;
  pointing_ = Pointing::Devices;
  const auto& mouse = static_cast<const MouseEvent&>(event);
  if (mouse.buttonType != QEvent::MouseButtonPress) return;
  const QPointF middle = middleOfAPixel(mouse.window);
  lastTouched_ = spotAt(mouse.window, mouse.localPos + middle, mouse.globalPos).view;
}

void QtEventHook::menuOpened(const platform::UIViewRef& opener) {
  if (!opener || opener == lastTouched_.lock()) return;
  if (pointing_ == Pointing::None || mouse_.touch || !fingers_.empty()) return;
  lastTouched_ = opener;
  watch_.pointedAt(opener);
  if (pointing_ == Pointing::Devices) return;
  const platform::CGRect bounds = opener->bounds();
  const platform::CGPoint middle = opener->convertPointToWindow({bounds.midX(), bounds.midY()});
  const auto touch = makeTouch(opener, opener->window(), middle);
  for (const UITouchPhase phase : {UITouchPhase::Began, UITouchPhase::Ended}) {
    touch->setPhase(phase);
    pointingEvent_._clearTouches();
    pointingEvent_._addTouch(touch, false);
    dispatch_.sendEvent(pointingEvent_, [] {});
  }
}

bool QtEventHook::isFirstExposure(const ExposeEvent& event) {
  const QWindow* const window = event.window;
  if (!window || window->parent()) return false;
  if (window->type() != Qt::Window && window->type() != Qt::Dialog) return false;
  const auto known = std::find(exposed_.begin(), exposed_.end(), window);
  if (event.isExposed == (known != exposed_.end())) return false;
  if (event.isExposed) {
    exposed_.emplace_back(event.window);
  } else {
    exposed_.erase(known);
  }
  exposed_.erase(std::remove(exposed_.begin(), exposed_.end(), nullptr), exposed_.end());
  return event.isExposed;
}

bool QtEventHook::show(platform::UIEvent& event, NativeEvent* native) {
  bool isProcessed = false;
  dispatch_.sendEvent(event, [&] { isProcessed = QWindowSystemEventHandler::sendEvent(native); });
  return isProcessed;
}

// When the recorder sends touches of its own meanwhile (a pick in spy mode), those stand for the
// finger, and the program does not see the finger itself.
bool QtEventHook::showFingers(NativeEvent* native) {
  const unsigned long fills = touchesEvent_.fills();
  const bool isLast = !mouse_.touch && fingers_.empty();
  bool isProcessed = true;
  dispatch_.sendEvent(fingerEvent_, [&] {
    if (touchesEvent_.fills() != fills) isSwallowing_ = true;
    const bool isSwallowed = isSwallowing_;
    if (isLast) isSwallowing_ = false;
    if (!isSwallowed) isProcessed = QWindowSystemEventHandler::sendEvent(native);
  });
  return isProcessed;
}

}  // namespace tarni::qt
