// QuickTree: which items of a scene are views, and which of them a finger meets. GUI thread.
//
// No views are: what a button, a field or a slider draws itself with; the moving part of a
// flickable (what stands in it are the flickable's subviews, as in UIKit); the overlay, so that
// popups stand in the window; a mouse area with nothing in it, which is to its parent what a
// gesture recognizer is in UIKit; an item that is nothing but room; what the agent itself draws.
#pragma once

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <functional>

namespace tarni::qt {

// Calls `visit` with the items whose views stand directly in the item's view, back to front. Of
// what a list keeps ready, only what its viewport shows.
void eachSubviewItem(const QQuickItem& item, const std::function<void(QQuickItem&)>& visit);

// The item whose view the item's view stands in; null for the topmost ones.
QQuickItem* superviewItem(const QQuickItem& item);

// The item whose view shows `item`: itself or one above it; null when only the scene itself does.
QQuickItem* viewItem(QQuickItem* item);

// The view's item that a finger at `point` of `root` meets, among `root` and what is in it; null
// for none. What takes the touch decides; unless that is a control, what it shows there is met
// first.
QQuickItem* itemAt(QQuickItem& root, QPointF point);

// True when a finger on that point of the item may mean it: it takes touches, or it draws something
// and leaves them to what it stands in. Whether something above it covers the point is not asked.
bool isMetAt(QQuickItem& item, QPointF point);

// True when a tap in the middle of the item does something by a handler or a mouse area.
bool hasTapHandler(const QQuickItem& item);

// Marks an item as the agent's own: it is never a view.
void hideFromWalks(QQuickItem& item);

}  // namespace tarni::qt
