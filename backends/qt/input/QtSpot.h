// QtSpot: what lies below a finger or the pointer. GUI thread.
#pragma once

#include <QtCore/QPointF>

#include "platform/UIKit/UIView.h"

QT_BEGIN_NAMESPACE
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

struct QtSpot {
  platform::UIWindowRef window;
  platform::UIViewRef view;  // null where nothing takes a touch
  platform::CGPoint point;   // in the window
  QPointF origin;            // of the window, on the screen
  bool isBlocked = false;    // behind a modal window: the program gets nothing of it
};

// `window` and `local` as the window system names them: an embedded window, or the one that grabs
// the mouse.
QtSpot spotAt(QWindow* window, QPointF local, QPointF global);

// A mouse names the corner of the pixel that it points at, which lies on the edge of what begins
// there: this is how far its middle is.
QPointF middleOfAPixel(const QWindow* window);

// Qt drops what comes to a window behind a modal one, as a view behind an alert is hit by nothing.
bool isBlockedByModal(const QWindow& window);

}  // namespace tarni::qt
