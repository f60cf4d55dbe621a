// QuickReach: where the items of a scene can be met, each with everything that stands in it. With
// it, a search at a point leaves out what lies elsewhere without entering it; so searches at the
// points of all items of a large page do not each go through all of them. It holds for the scene as
// it was when this was made. GUI thread.
#pragma once

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>
#include <unordered_map>
#include <vector>

#include "platform/QuartzCore/RectIndex.h"

namespace tarni::qt {

class QuickReach {
 public:
  // Of everything below `root`.
  explicit QuickReach(const QQuickItem& root);

  // The shown children that may be met at a point of the item, in paint order.
  std::vector<QQuickItem*> childrenAt(const QQuickItem& item, QPointF point) const;

 private:
  struct Children {
    std::vector<QPointer<QQuickItem>> items;  // in paint order
    std::vector<platform::CGRect> reaches;    // in the parent's coordinates
    platform::RectIndex places;
  };
  std::unordered_map<const QQuickItem*, Children> children_;
};

// Into the parent's coordinates.
QTransform transformToParent(const QQuickItem& item);

// False for an item that nobody sees, whatever stands in it; so are the rows that a list keeps
// ready.
bool isShown(const QQuickItem& item);

// What of the item is on screen, where nothing above it clips it away and no flickable has scrolled
// it out, in its own coordinates; the smallest upright rectangle round that when the item is
// turned. Of what dims the page behind a modal popup it is the largest part beside that popup. The
// whole item while it is hidden, and nothing, at its origin, when all of it is clipped away.
QRectF shownPart(const QQuickItem& item);

}  // namespace tarni::qt
