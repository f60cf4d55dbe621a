// Drag and drop that a program begins under the agent's mouse or finger. It is carried through the
// windows of the program itself: a window system leads a drag along a person's pointer alone, and
// Qt crashes where a compositor has none. GUI thread.
#pragma once

#include <QtCore/QPointF>
#include <QtGui/QWindow>

namespace tarni::qt {

// The agent's pointer is down there, a point of the window. It carries what the program drags from
// now on.
void carryDragsAt(QWindow& window, QPointF position);

// The pointer goes up: what it carries is dropped by that event, and drags are the platform's
// again.
void leaveDrags();

}  // namespace tarni::qt
