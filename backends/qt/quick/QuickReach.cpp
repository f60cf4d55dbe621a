#include "backends/qt/quick/QuickReach.h"

#include <private/qquickflickable_p.h>
#include <private/qquickitem_p.h>

#include <algorithm>
#include <array>

#include "backends/qt/quick/QuickKind.h"
#include "backends/qt/quick/QuickScene.h"

namespace tarni::qt {
namespace {

// A shape of its own may be larger than the item.
QRectF ownReach(const QQuickItem& item) {
  constexpr double kFar = 1e9;
  if (item.containmentMask()) return {-kFar, -kFar, 2 * kFar, 2 * kFar};
  return {{}, item.size()};
}

platform::CGRect asCGRect(const QRectF& rect) {
  return {{rect.x(), rect.y()}, {rect.width(), rect.height()}};
}

QRectF largestPartBeside(const QQuickItem& popup, const QQuickItem& item) {
  const QRectF all({}, item.size());
  const QRectF taken = item.mapRectFromItem(&popup, {{}, popup.size()}) & all;
  if (taken.isEmpty()) return all;
  QRectF left = all;
  left.setRight(taken.left());
  QRectF right = all;
  right.setLeft(taken.right());
  QRectF above = all;
  above.setBottom(taken.top());
  QRectF below = all;
  below.setTop(taken.bottom());
  const std::array free{left, right, above, below};
  return std::ranges::max(free, {},
                          [](const QRectF& part) { return part.width() * part.height(); });
}

// What is scrolled out of a flickable that does not clip is drawn, mostly below a tool bar or
// outside of the window, where no finger finds it.
bool keepsContents(const QQuickItem& item) {
  return item.clip() || qobject_cast<const QQuickFlickable*>(&item);
}

struct Entry {
  QQuickItem* item;
  std::size_t parent;  // its index; its own for the root
  QRectF reach;
};

}  // namespace

QuickReach::QuickReach(const QQuickItem& root) {
  // Parents before children, each parent's children in paint order.
  std::vector<Entry> entries{{const_cast<QQuickItem*>(&root), 0, ownReach(root)}};
  for (std::size_t at = 0; at < entries.size(); ++at) {
    const QQuickItem& parent = *entries[at].item;
    for (QQuickItem* const child : QQuickItemPrivate::get(&parent)->paintOrderChildItems()) {
      if (isShown(*child)) entries.push_back({child, at, ownReach(*child)});
    }
  }
  // Whatever stands in an item has been added to its reach when its own turn comes.
  for (std::size_t at = entries.size() - 1; at > 0; --at) {
    Entry& entry = entries[at];
    if (entry.item->clip()) entry.reach &= entry.item->clipRect();
    entry.reach = transformToParent(*entry.item).mapRect(entry.reach);
    entries[entry.parent].reach |= entry.reach;
  }
  for (std::size_t at = 1; at < entries.size(); ++at) {
    const Entry& entry = entries[at];
    Children& children = children_[entries[entry.parent].item];
    children.items.emplace_back(entry.item);
    children.reaches.push_back(asCGRect(entry.reach));
  }
  for (auto& [item, children] : children_) {
    children.places = platform::RectIndex(std::move(children.reaches));
  }
}

std::vector<QQuickItem*> QuickReach::childrenAt(const QQuickItem& item, QPointF point) const {
  std::vector<QQuickItem*> met;
  const auto found = children_.find(&item);
  if (found == children_.end()) return met;
  found->second.places.eachAt({point.x(), point.y()}, [&](std::size_t position) {
    if (QQuickItem* const child = found->second.items[position]) met.push_back(child);
    return false;
  });
  std::ranges::reverse(met);
  return met;
}

QTransform transformToParent(const QQuickItem& item) {
  QTransform transform;
  QQuickItemPrivate::get(&item)->itemToParentTransform(transform);
  return transform;
}

QRectF shownPart(const QQuickItem& item) {
  const QQuickItem* const popup = popupDismissedBy(item);
  const QRectF own = popup ? largestPartBeside(*popup, item) : QRectF({}, item.size());
  if (own.isEmpty() || !item.isVisible() || !item.window()) return own;
  QRectF shown = own;
  QTransform toAbove;
  const auto clipBy = [&](const QRectF& clip) {
    bool isFlat = false;
    const QTransform fromAbove = toAbove.inverted(&isFlat);
    shown &= isFlat ? fromAbove.mapRect(clip) : QRectF();
  };
  for (const QQuickItem* at = &item; at; at = at->parentItem()) {
    if (at != &item && keepsContents(*at)) clipBy(at->clipRect());
    toAbove *= transformToParent(*at);
  }
  clipBy(shownPartOfScene(*item.window()));
  return shown.isEmpty() ? QRectF() : shown;
}

bool isShown(const QQuickItem& item) {
  return item.isVisible() && item.opacity() > 0 && !QQuickItemPrivate::get(&item)->culled;
}

}  // namespace tarni::qt
