// QtMouse: a mouse of the agent's own. Its events are those that a platform plug-in makes of a real
// one; Qt adds double clicks, context menus and what hangs on the pointer's resting place. The real
// pointer stays where it is. GUI thread.
//
// Events are processed by Qt within the call, which may enter a nested loop of the program.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QWindow>
#include <array>
#include <utility>

#include "platform/UIKit/InputDevices.h"

namespace tarni::qt {

// The buttons as the toolkit and as the agent calls them.
inline constexpr std::array<std::pair<Qt::MouseButton, platform::PointerButton>, 5> kMouseButtons{{
    {Qt::LeftButton, platform::PointerButton::Left},
    {Qt::RightButton, platform::PointerButton::Right},
    {Qt::MiddleButton, platform::PointerButton::Middle},
    {Qt::BackButton, platform::PointerButton::Back},
    {Qt::ForwardButton, platform::PointerButton::Forward},
}};

// Of a notch of the wheel, in eighths of a degree.
inline constexpr int kAnglePerNotch = 120;

class QtMouse {
 public:
  // `position` in points of the top-level window.
  void moveTo(QWindow& window, QPointF position, Qt::KeyboardModifiers modifiers);
  // Nothing happens when the button is as it shall be.
  void setButton(Qt::MouseButton button, bool isDown, Qt::KeyboardModifiers modifiers);
  // Eighths of a degree, as Qt counts: to the left and up.
  void turnWheel(QPoint angle, Qt::KeyboardModifiers modifiers);

  // What gets the next event: the popup that holds the user, the window on which a button is down,
  // the window where the pointer is. Null when the pointer is beside all of the program's.
  QWindow* target() const;

 private:
  void send(QWindow& window, Qt::MouseButton button, QEvent::Type type,
            Qt::KeyboardModifiers modifiers) const;
  void followPointer(QWindow& window);
  QPointF inWindow(const QWindow& window) const;

  QPointer<QWindow> window_;   // that the pointer was moved to last
  QPointer<QWindow> entered_;  // that believes the pointer to be in it
  QPointer<QWindow> pressed_;  // on which the first of the buttons went down
  QPointF onScreen_;
  Qt::MouseButtons buttons_;
};

}  // namespace tarni::qt
