#include "backends/qt/input/QtSpot.h"

#include <QtGui/private/qwindow_p.h>
#include <QtWidgets/QWidget>

#include "backends/qt/views/QtPopup.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {

bool isBlockedByModal(const QWindow& window) {
  return qt_window_private(const_cast<QWindow*>(&window))->blockedByModalWindow;
}

QPointF middleOfAPixel(const QWindow* window) {
  const double half = 0.5 / (window ? window->devicePixelRatio() : 1);
  return {half, half};
}

QtSpot spotAt(QWindow* window, QPointF local, QPointF global) {
  bool isBlocked = window && isBlockedByModal(*window);
  while (window && window->parent()) {
    local += window->position();
    window = window->parent();
  }
  // The window system names the window that grabs the mouse, which the first popup does.
  if (const QWidget* const pressed = windowPressedBesidePopup(global.toPoint())) {
    const QPoint origin = window ? window->mapToGlobal(QPoint()) : QPoint();
    local += origin - pressed->mapToGlobal(QPoint());
    window = pressed->windowHandle();
    isBlocked = false;
  }
  const platform::CGPoint point{local.x(), local.y()};
  platform::UIWindowRef windowView = viewOfWindow(window);
  platform::UIViewRef view = windowView && !isBlocked ? windowView->hitTest(point) : nullptr;
  return {std::move(windowView), std::move(view), point, global - local, isBlocked};
}

}  // namespace tarni::qt
