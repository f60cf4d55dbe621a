// The windows of the window system, as input finds them. GUI thread.
#pragma once

#include <qpa/qwindowsysteminterface_p.h>
#include <QtCore/QPointF>

QT_BEGIN_NAMESPACE
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

// The window at `position` (its own coordinates): itself, or one that is embedded in it.
QWindow* windowAt(QWindow* window, QPointF position);
QPointF originInTopLevel(const QWindow* window);
QPointF originOnScreen(const QWindow& window);

// Where no program gets the keyboard by asking for it, nor learns where its windows stand.
bool isOnWayland();

// Has Qt process an event of a synthetic device at once, past who sees those of the window system;
// who observes a person's input is shown it if a person is at work.
// May enter a nested loop of the program.
void process(QWindowSystemInterfacePrivate::WindowSystemEvent& event);

}  // namespace tarni::qt
