#include "backends/qt/input/QtInputWatch.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QStyleHints>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <utility>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/input/QtKeyboard.h"
#include "backends/qt/input/QtMouse.h"
#include "backends/qt/input/QtSpot.h"
#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/views/QtExtension.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::qt {
namespace {

using platform::InputEvent;
using platform::InputKind;
using platform::UIViewRef;

constexpr double kNewClock = 60;  // seconds by which no event is late

unsigned modifiersOf(Qt::KeyboardModifiers modifiers) {
  unsigned bits = 0;
  if (modifiers.testFlag(Qt::ShiftModifier)) bits |= platform::kShift;
  if (modifiers.testFlag(Qt::ControlModifier)) bits |= platform::kControl;
  if (modifiers.testFlag(Qt::AltModifier)) bits |= platform::kAlt;
  if (modifiers.testFlag(Qt::MetaModifier)) bits |= platform::kMeta;
  return bits;
}

UIViewRef viewOfObject(QObject* object) {
  if (!object) return nullptr;
  if (object->isWidgetType()) return viewOfWidget(static_cast<QWidget*>(object));
  if (object->isWindowType()) return viewOfWindow(static_cast<QWindow*>(object));
  return extensions().viewOfObject(*object);
}

// The uppermost there that is more than the picture of what is dragged, which hangs at the pointer.
QWindow* windowBelow(QPointF global) {
  QWindow* const uppermost = QGuiApplication::topLevelAt(global.toPoint());
  if (!uppermost || viewOfWindow(uppermost)) return uppermost;
  const QWindowList windows = QGuiApplication::topLevelWindows();
  const auto lies = [&global](QWindow* window) {
    return window->isVisible() && window->geometry().contains(global.toPoint()) &&
           viewOfWindow(window);
  };
  const auto found = std::find_if(windows.rbegin(), windows.rend(), lies);
  return found == windows.rend() ? nullptr : *found;
}

// What the keyboard writes to, and how it takes that.
void describeFocus(InputEvent& event, QObject* focus) {
  event.view = viewOfObject(focus);
  event.window = event.view ? event.view->window() : nullptr;
  if (!focus) return;
  QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImHints);
  QCoreApplication::sendEvent(focus, &query);
  event.takesText = query.value(Qt::ImEnabled).toBool();
  const auto hints = Qt::InputMethodHints(query.value(Qt::ImHints).toInt());
  event.isSecret = hints.testFlag(Qt::ImhHiddenText);
}

}  // namespace

void QtInputWatch::setObserver(platform::InputObserver* observer) {
  observer_ = observer;
  buttons_ = {};
  QCoreApplication* const application = QCoreApplication::instance();
  if (!application) return;
  application->removeEventFilter(this);
  disconnect(waiting_);
  if (!observer) return;
  application->installEventFilter(this);
  waiting_ = connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     this, [this] { noteSizes(); });
  noteSizes();
}

void QtInputWatch::see(const Interface::WindowSystemEvent& event) {
  if (!observer_) return;
  platform::runGuarded("input observer", [&] {
    switch (event.type) {
      case Interface::Mouse:
        return seeMouse(static_cast<const Interface::MouseEvent&>(event));
      case Interface::Wheel:
        return seeWheel(static_cast<const Interface::WheelEvent&>(event));
      case Interface::Key:
        return seeKey(static_cast<const Interface::KeyEvent&>(event));
      case Interface::GeometryChange:
        return seeResize(static_cast<const Interface::GeometryChangeEvent&>(event));
      case Interface::Close: {
        InputEvent closed{InputKind::Closed, uptimeOf(0)};
        closed.window = viewOfWindow(static_cast<const Interface::CloseEvent&>(event).window);
        return show(closed);
      }
      default:
        return;
    }
  });
}

// Which button it was is told by what has changed: older platform plug-ins do not name it.
void QtInputWatch::seeMouse(const Interface::MouseEvent& event) {
  if (event.nonClientArea) return;
  const Qt::MouseButtons before = std::exchange(buttons_, event.buttons);
  InputEvent shown{InputKind::Move, uptimeOf(event.timestamp)};
  shown.modifiers = modifiersOf(event.modifiers);
  for (const auto& [native, button] : kMouseButtons) {
    if (before.testFlag(native) == buttons_.testFlag(native)) continue;
    shown.kind = buttons_.testFlag(native) ? InputKind::Press : InputKind::Release;
    shown.button = button;
  }
  pointer_ = {topLevelOf(event.window), event.globalPos};
  // Nobody asks where the pointer goes while no button is down.
  if (shown.kind == InputKind::Move && !buttons_) return;
  // The release of a press that closes a popup may get lost with it: a later move tells of it.
  const bool isLate = shown.kind == InputKind::Release && event.buttonType == QEvent::MouseMove;
  if (isLate) shown.time = lastMouse_;
  lastMouse_ = shown.time;
  const QPointF middle = middleOfAPixel(event.window);
  seePointer(shown, event.window, event.localPos + middle, event.globalPos);
}

void QtInputWatch::seePointer(InputEvent& event, QWindow* window, QPointF local, QPointF global) {
  if (event.kind == InputKind::Press) {
    countClicks(event, global);
    pressed_ = topLevelOf(window);
  } else if (pressed_ && !viewOfWindow(topLevelOf(window))) {
    // The picture of what is dragged has the mouse.
    window = pressed_;
    local = global - originOnScreen(*window);
  }
  if (event.kind == InputKind::Move) {
    window = topLevelOf(window);
    if (window) local = global - originOnScreen(*window);
    event.window = viewOfWindow(window);
    event.point = {local.x(), local.y()};
    return show(event);
  }
  // A drag may end over another window than that which has the mouse until then.
  QWindow* const below = event.kind == InputKind::Release ? windowBelow(global) : nullptr;
  if (below && below != topLevelOf(window)) {
    local = global - originOnScreen(*below);
    window = below;
  }
  const QtSpot spot = spotAt(window, local, global);
  if (spot.isBlocked && event.kind == InputKind::Press) return;
  event.window = spot.window;
  event.view = spot.view;
  event.point = spot.point;
  show(event);
}

void QtInputWatch::seeFinger(InputKind kind, QWindow* window, QPointF global, unsigned long time) {
  if (!observer_) return;
  platform::runGuarded("input observer", [&] {
    InputEvent event{kind, uptimeOf(time)};
    const QPointF local = window ? global - originOnScreen(*window) : global;
    seePointer(event, window, local, global);
  });
}

void QtInputWatch::seeWheel(const Interface::WheelEvent& event) {
  InputEvent shown{InputKind::Wheel, uptimeOf(event.timestamp)};
  shown.modifiers = modifiersOf(event.modifiers);
  shown.notches = {-event.angleDelta.x() / double{kAnglePerNotch},
                   -event.angleDelta.y() / double{kAnglePerNotch}};
  const QtSpot spot = spotAt(event.window, event.localPos, event.globalPos);
  if (spot.isBlocked) return;
  shown.window = spot.window;
  shown.view = spot.view;
  shown.point = spot.point;
  show(shown);
}

void QtInputWatch::seeKey(const Interface::KeyEvent& event) {
  const bool isDown = event.keyType == QEvent::KeyPress;
  InputEvent shown{isDown ? InputKind::KeyDown : InputKind::KeyUp, uptimeOf(event.timestamp)};
  const std::string name = QtKeyboard::nameOf(event.key, event.unicode);
  shown.key = name;
  shown.modifiers = modifiersOf(event.modifiers);
  shown.text = utf8(event.unicode);
  shown.isRepeat = event.repeat;
  QWindow* const window = event.window ? event.window.data() : QGuiApplication::focusWindow();
  if (isDown && window) describeFocus(shown, QtKeyboard::focusIn(*window));
  shown.window = viewOfWindow(pointer_.window);
  if (shown.window) {
    const QPointF inside = pointer_.global - originOnScreen(*pointer_.window);
    shown.point = {inside.x(), inside.y()};
  }
  show(shown);
}

void QtInputWatch::noteSizes() {
  sizes_.clear();
  for (const QWindow* const window : QGuiApplication::topLevelWindows()) {
    if (window->handle()) sizes_[window] = window->size();
  }
}

// A widget that the program sizes has its size before the window system answers. A window without
// one has it at once when either does: what the program asks for is waited for.
bool QtInputWatch::isAnswer(const Interface::GeometryChangeEvent& event) const {
  const QSize size = event.newGeometry.size();
  if (const QWidget* const widget = QWidget::find(event.window->winId())) {
    return size == widget->size();
  }
  const auto known = sizes_.find(event.window);
  return known == sizes_.end() || size == known->second;
}

void QtInputWatch::seeResize(const Interface::GeometryChangeEvent& event) {
  const bool isShown = event.window && !event.window->parent() && event.window->isExposed();
  if (!isShown || isAnswer(event) || event.window->type() == Qt::Popup) return;
  InputEvent resized{InputKind::Resized, uptimeOf(0)};
  resized.window = viewOfWindow(event.window);
  show(resized);
}

void QtInputWatch::pointedAt(const UIViewRef& view) {
  if (!observer_) return;
  InputEvent event{InputKind::Pointed, uptimeOf(0)};
  event.view = view;
  event.window = view->window();
  show(event);
}

// Dead keys and input methods write past the keys.
bool QtInputWatch::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() != QEvent::InputMethod || doerAtWork() == Doer::Agent) return false;
  const QString committed = static_cast<const QInputMethodEvent*>(event)->commitString();
  if (!observer_ || committed.isEmpty()) return false;
  platform::runGuarded("input observer", [&] {
    InputEvent shown{InputKind::Text, uptimeOf(0)};
    shown.text = utf8(committed);
    describeFocus(shown, receiver);
    show(shown);
  });
  return false;
}

void QtInputWatch::show(const InputEvent& event) {
  observer_->willHandle(event);
}

void QtInputWatch::countClicks(InputEvent& event, QPointF global) {
  const QStyleHints& hints = *QGuiApplication::styleHints();
  const QPointF way = global - lastPress_.global;
  const bool isNear =
      std::max(std::abs(way.x()), std::abs(way.y())) <= hints.mouseDoubleClickDistance();
  const bool isSoon = (event.time - lastPress_.time) * 1000 < hints.mouseDoubleClickInterval();
  const bool follows = isNear && isSoon && lastPress_.button == event.button;
  // A third press begins anew, as it does for the toolkit.
  event.clicks = follows && lastPress_.clicks == 1 ? 2 : 1;
  lastPress_ = {event.button, event.time, global, event.clicks};
}

// The least that any event was late is taken for none at all.
double QtInputWatch::uptimeOf(unsigned long time) {
  const double now = platform::current().processInfo->systemUptime();
  if (time == 0) return now;
  const double reported = static_cast<double>(time) / 1000;
  const double behind = now - reported;
  if (clock_ == 0 || behind < clock_ || behind > clock_ + kNewClock) clock_ = behind;
  return reported + clock_;
}

}  // namespace tarni::qt
