#include "backends/qt/input/NativeWindows.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <algorithm>

#include "backends/qt/input/QtEventHook.h"
#include "backends/qt/program/InputQueue.h"

namespace tarni::qt {

QWindow* windowAt(QWindow* window, QPointF position) {
  const auto holds = [&position](const QObject* child) {
    const auto* const inner = qobject_cast<const QWindow*>(child);
    return inner && inner->isVisible() && inner->geometry().contains(position.toPoint());
  };
  while (window) {
    const QObjectList& children = window->children();
    const auto found = std::find_if(children.rbegin(), children.rend(), holds);
    if (found == children.rend()) break;
    window = static_cast<QWindow*>(*found);
    position -= window->position();
  }
  return window;
}

QPointF originInTopLevel(const QWindow* window) {
  QPointF origin;
  for (; window->parent(); window = window->parent()) origin += window->position();
  return origin;
}

QPointF originOnScreen(const QWindow& window) {
  return window.mapToGlobal(QPoint(0, 0));
}

bool isOnWayland() {
  return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

void process(QWindowSystemInterfacePrivate::WindowSystemEvent& event) {
  if (doerAtWork() == Doer::Person) showPersonsInput(event);
  QWindowSystemEventHandler().QWindowSystemEventHandler::sendEvent(&event);
}

}  // namespace tarni::qt
