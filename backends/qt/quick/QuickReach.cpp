#include "backends/qt/quick/QuickReach.h"

#include <private/qquickflickable_p.h>
#include <private/qquickitem_p.h>

namespace tarni::qt {
namespace {

// A shape of its own may be larger than the item.
QRectF ownReach(const QQuickItem& item) {
  constexpr double kFar = 1e9;
  if (item.containmentMask()) return {-kFar, -kFar, 2 * kFar, 2 * kFar};
  return {{}, item.size()};
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
    if (clipsContents(*entry.item)) entry.reach &= entry.item->clipRect();
    entry.reach = transformToParent(*entry.item).mapRect(entry.reach);
    entries[entry.parent].reach |= entry.reach;
  }
  for (std::size_t at = 1; at < entries.size(); ++at) {
    const Entry& entry = entries[at];
    children_[entries[entry.parent].item].push_back({entry.item, entry.reach, entry.item->z()});
  }
}

const std::vector<QuickReach::Child>& QuickReach::childrenOf(const QQuickItem& item) const {
  static const std::vector<Child> none;
  const auto found = children_.find(&item);
  return found == children_.end() ? none : found->second;
}

QTransform transformToParent(const QQuickItem& item) {
  QTransform transform;
  QQuickItemPrivate::get(&item)->itemToParentTransform(transform);
  return transform;
}

bool isShown(const QQuickItem& item) {
  return item.isVisible() && item.opacity() > 0;
}

bool clipsContents(const QQuickItem& item) {
  return item.clip() || qobject_cast<const QQuickFlickable*>(&item);
}

}  // namespace tarni::qt
