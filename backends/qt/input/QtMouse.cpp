#include "backends/qt/input/QtMouse.h"

#include <QtGui/private/qguiapplication_p.h>

#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/input/QtCarriedDrag.h"

namespace tarni::qt {
namespace {

using Interface = QWindowSystemInterfacePrivate;

unsigned long timestampNow() {
  return static_cast<unsigned long>(Interface::eventTime.elapsed());
}

}  // namespace

void QtMouse::moveTo(QWindow& window, QPointF position, Qt::KeyboardModifiers modifiers) {
  QWindow* const inner = windowAt(&window, position);
  // Where the hand goes to anew it begins a new click, however soon after the last.
  if (!buttons_) QGuiApplicationPrivate::mousePressButton = Qt::NoButton;
  window_ = inner;
  onScreen_ = originOnScreen(window) + position;
  if (buttons_) carryDragsAt(window, position);
  QPointer<QWindow> getsIt = target();
  if (getsIt) followPointer(*getsIt);
  if (getsIt) send(*getsIt, Qt::NoButton, QEvent::MouseMove, modifiers);
}

void QtMouse::setButton(Qt::MouseButton button, bool isDown, Qt::KeyboardModifiers modifiers) {
  if (buttons_.testFlag(button) == isDown) return;
  QWindow* const getsIt = target();
  if (isDown && !buttons_) pressed_ = getsIt;
  buttons_.setFlag(button, isDown);
  if (!buttons_) pressed_ = nullptr;
  if (isDown && window_) carryDragsAt(*window_, inWindow(*window_));
  if (!buttons_) leaveDrags();
  if (!getsIt) return;
  send(*getsIt, button, isDown ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, modifiers);
}

void QtMouse::turnWheel(QPoint angle, Qt::KeyboardModifiers modifiers) {
  QWindow* const getsIt = target();
  if (!getsIt || angle.isNull()) return;
  const bool isUpright = angle.x() == 0;
  Interface::WheelEvent event(getsIt, timestampNow(), inWindow(*getsIt), onScreen_, QPoint(), angle,
                              isUpright ? angle.y() : angle.x(),
                              isUpright ? Qt::Vertical : Qt::Horizontal, modifiers);
  process(event);
}

QWindow* QtMouse::target() const {
  const QWidget* const popup = QApplication::activePopupWidget();
  if (popup && popup->windowHandle()) return popup->windowHandle();
  if (pressed_) return pressed_;
  if (window_ && window_->isVisible()) return window_;
  return QGuiApplication::topLevelAt(onScreen_.toPoint());
}

void QtMouse::send(QWindow& window, Qt::MouseButton button, QEvent::Type type,
                   Qt::KeyboardModifiers modifiers) const {
  Interface::MouseEvent event(&window, timestampNow(), inWindow(window), onScreen_, buttons_,
                              modifiers, button, type);
  process(event);
}

// A window system tells the windows, but not while a button is down.
void QtMouse::followPointer(QWindow& window) {
  const bool isInside = QRectF(QPointF(), QSizeF(window.size())).contains(inWindow(window));
  QWindow* const now = isInside ? &window : nullptr;
  if (buttons_ || now == entered_) return;
  const QPointer<QWindow> left = entered_;
  entered_ = now;
  if (left) {
    Interface::LeaveEvent leave(left);
    process(leave);
  }
  if (entered_) {
    Interface::EnterEvent enter(entered_, inWindow(*entered_), onScreen_);
    process(enter);
  }
}

QPointF QtMouse::inWindow(const QWindow& window) const {
  return onScreen_ - originOnScreen(window);
}

}  // namespace tarni::qt
