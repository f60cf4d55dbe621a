#include "backends/qt/quick/QuickTree.h"

#include <private/qquickflickable_p.h>
#include <private/qquickitem_p.h>
#include <private/qquickmousearea_p.h>
#include <private/qquickpointerhandler_p.h>
#include <private/qquickrectangle_p.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "backends/qt/program/Stillness.h"
#include "backends/qt/quick/QmlOrigin.h"
#include "backends/qt/quick/QuickReach.h"
#include "backends/qt/quick/QuickRegistry.h"

namespace tarni::qt {
namespace {

using Role = KnownItem::Role;

std::unordered_set<const QObject*>& ownItems() {
  static auto* const shared = new std::unordered_set<const QObject*>;
  return *shared;
}

const QQuickFlickable* flickableOf(const QQuickItem& item) {
  return qobject_cast<const QQuickFlickable*>(&item);
}

const QQuickFlickable* flickableOfContent(const QQuickItem& item) {
  const auto* const flickable = item.parentItem() ? flickableOf(*item.parentItem()) : nullptr;
  return flickable && flickable->contentItem() == &item ? flickable : nullptr;
}

bool isRecognizer(const QQuickItem& item) {
  return qobject_cast<const QQuickMouseArea*>(&item) &&
         QQuickItemPrivate::get(&item)->childItems.isEmpty();
}

bool isTransparentRectangle(const QQuickItem& item) {
  const auto* const rectangle = qobject_cast<const QQuickRectangle*>(&item);
  return rectangle && rectangle->color().alpha() == 0;
}

// An item that shows nothing but an edge, takes no touches and has nothing in it, however large it
// is. Popups have such a frame above their rows.
bool isNothing(const QQuickItem& item) {
  const auto* const hidden = QQuickItemPrivate::get(&item);
  const bool isBare = item.metaObject() == &QQuickItem::staticMetaObject && isDeclared(item);
  return hidden->childItems.isEmpty() && !hidden->hasPointerHandlers() &&
         (isBare || isTransparentRectangle(item));
}

// What a control of the toolkit is drawn with. The field of a combo box or a spin box that can be
// edited is a field.
bool isPartOfDrawing(const QQuickItem& item, const QQuickItem& parent) {
  if (!drawsItself(kindOf(parent)) || isDeclaredByApplication(item)) return false;
  if (isControlPart(item)) return false;
  return kindOf(item) != QuickKind::TextField || !parent.property("editable").toBool();
}

// Lists add items of their own to their content that show nothing.
bool isUndeclaredRest(const QQuickItem& item, const QQuickItem& parent) {
  return flickableOfContent(parent) && !isDeclared(item);
}

Role roleBelow(const QQuickItem& parent, const QQuickItem& item) {
  if (flickableOfContent(item) || item.inherits("QQuickOverlay")) return Role::Transparent;
  const bool isNoView = isPartOfDrawing(item, parent) || isUndeclaredRest(item, parent);
  return isNoView ? Role::NoView : Role::View;
}

Role roleOf(const QQuickItem& item) {
  if (!ownItems().empty() && ownItems().contains(&item)) return Role::NoView;
  const QQuickItem* const parent = item.parentItem();
  if (!parent) return Role::View;
  if (isRecognizer(item)) return Role::NoView;
  if (isNothing(item) && !isControlPart(item)) return Role::NoView;
  const KnownItem& known = knownItem(item);
  if (known.parent == parent) return known.role;
  const Role role = roleBelow(*parent, item);
  KnownItem& renewed = knownItem(item);
  renewed.parent = parent;
  renewed.role = role;
  return role;
}

bool isInViewport(const QQuickItem& item, const QQuickFlickable& flickable) {
  const QRectF viewport(0, 0, flickable.width(), flickable.height());
  const QRectF rect(item.position() + item.parentItem()->position(), item.size());
  return rect.isEmpty() || viewport.intersects(rect);
}

bool isList(QuickKind kind) {
  return kind == QuickKind::TableView || kind == QuickKind::CollectionView;
}

QList<QQuickItem*> childrenInPaintOrder(const QQuickItem& item) {
  return QQuickItemPrivate::get(&item)->paintOrderChildItems();
}

// ---------------------------------------------------------------------------------- what is met

// From the parent's coordinates into the child's. Mapping between any two items goes by the whole
// scene instead.
QPointF intoChild(const QQuickItem& child, QPointF point) {
  const QTransform toParent = transformToParent(child);
  if (toParent.type() <= QTransform::TxTranslate) {
    return point - QPointF(toParent.dx(), toParent.dy());
  }
  return toParent.inverted().map(point);
}

bool clipsAway(const QQuickItem& item, QPointF point) {
  return item.clip() && !item.clipRect().contains(point);
}

// A frame that somebody laid over everything covers nothing.
bool draws(const QQuickItem& item) {
  return item.flags().testFlag(QQuickItem::ItemHasContents) && !isTransparentRectangle(item);
}

// The overlay keeps everything from what is below it only while a modal popup is in it.
bool isBlocking(const QQuickItem& overlay) {
  return std::ranges::any_of(overlay.childItems(), [](const QQuickItem* child) {
    const QObject* const popup = popupOfItem(*child);
    return popup && child->isVisible() && popup->property("modal").toBool();
  });
}

// A mouse area can be switched off by itself, which the item that it is does not tell.
bool isOn(const QQuickItem& item) {
  const auto* const area = qobject_cast<const QQuickMouseArea*>(&item);
  return item.isEnabled() && (!area || area->isEnabled());
}

bool takesTouches(const QQuickItem& item) {
  if (!isOn(item)) return false;
  if (item.inherits("QQuickOverlay")) return isBlocking(item);
  // These say that they take touches, but a text takes those on its links only, and a flickable
  // that is not to be flicked none.
  if (item.inherits("QQuickText")) return false;
  if (const auto* const flickable = flickableOf(item)) return flickable->isInteractive();
  return item.acceptedMouseButtons().testFlag(Qt::LeftButton) ||
         QQuickItemPrivate::get(&item)->hasPointerHandlers();
}

// Goes through the items at a point from front to back until one takes the touch. One that is not
// a view itself may stand above what its parent shows.
class Probe {
 public:
  // With the reach of all items below `root`, when it is known.
  Probe(QQuickItem& root, QPointF point, const QuickReach* reach) : reach_(reach) {
    steps_.push_back({&root, point, Visit::Enter});
    while (!steps_.empty() && (!taker || (isRecognizer(*taker) && !drawn))) {
      const Step step = steps_.back();
      steps_.pop_back();
      if (step.visit == Visit::Enter) {
        enter(*step.item, step.point);
      } else if (step.item->contains(step.point)) {
        meet(*step.item, step.visit);
      }
    }
  }

  QQuickItem* drawn = nullptr;
  QQuickItem* taker = nullptr;

 private:
  enum class Visit : std::uint8_t { Enter, Draw, Take };
  struct Step {
    QQuickItem* item;
    QPointF point;
    Visit visit;
  };
  // Qt 5 offers a touch to what an item is painted over before the item gets it.
  static constexpr bool kTakesLast = QT_VERSION < QT_VERSION_CHECK(6, 0, 0);

  void enter(QQuickItem& item, QPointF point) {
    if (!isShown(item) || clipsAway(item, point)) return;
    if (!ownItems().empty() && ownItems().contains(&item)) return;
    if (kTakesLast) steps_.push_back({&item, point, Visit::Take});
    bool isSelfPushed = false;
    const auto pushSelf = [&] {
      if (std::exchange(isSelfPushed, true)) return;
      if (!kTakesLast) steps_.push_back({&item, point, Visit::Take});
      steps_.push_back({&item, point, Visit::Draw});
    };
    const auto push = [&](QQuickItem* child) {
      if (child->z() >= 0) pushSelf();
      steps_.push_back({child, intoChild(*child, point), Visit::Enter});
    };
    if (reach_) {
      std::ranges::for_each(reach_->childrenAt(item, point), push);
    } else {
      std::ranges::for_each(childrenInPaintOrder(item), push);
    }
    pushSelf();
  }

  void meet(QQuickItem& item, Visit visit) {
    if (visit == Visit::Draw && !drawn && draws(item)) drawn = &item;
    if (visit == Visit::Take && !taker && takesTouches(item)) taker = &item;
  }

  const QuickReach* const reach_;
  std::vector<Step> steps_;
};

// Known while many points of the scene are asked for.
const QuickReach* reachOf(QQuickItem& root) {
  using Reaches = std::unordered_map<const QQuickItem*, QuickReach>;
  static const char key = 0;
  auto* const known = keptWhileStill<Reaches>(&key);
  return known ? &known->try_emplace(&root, root).first->second : nullptr;
}

// True when a finger on `item` is meant for it although `taker` (null is the scene) takes the
// touch: it stands in that, which is not a control, with nothing between them that takes touches of
// its own.
bool isMeant(const QQuickItem* item, const QQuickItem* taker) {
  if (!item || (taker && item != taker && !taker->isAncestorOf(item))) return false;
  if (taker && item != taker && drawsItself(kindOf(*taker))) return false;
  for (; item && item != taker; item = item->parentItem()) {
    if (takesTouches(*item)) return false;
  }
  return true;
}

// The part of the control that a finger means there. A slider goes by where the finger is, and no
// tap tells that again: one on its handle is one that leaves it as it is.
QQuickItem* controlPartAt(const QQuickItem& control, QPointF point) {
  const bool isAnywhere = control.inherits("QQuickSlider");
  for (QQuickItem* const child : control.childItems()) {
    if (!child->isVisible() || !isControlPart(*child)) continue;
    if (isAnywhere || child->contains(child->mapFromItem(&control, point))) return child;
  }
  return nullptr;
}

}  // namespace

void eachSubviewItem(const QQuickItem& item, const std::function<void(QQuickItem&)>& visit) {
  // Most items have none, and what is looked up for each of thousands is out of the caches by then.
  const QList<QQuickItem*> children = childrenInPaintOrder(item);
  if (children.isEmpty()) return;
  const auto* const list = isList(kindOf(item)) ? flickableOf(item) : nullptr;
  for (QQuickItem* const child : children) {
    const Role role = roleOf(*child);
    if (role == Role::View) visit(*child);
    if (role != Role::Transparent || !child->isVisible()) continue;
    for (QQuickItem* const inner : childrenInPaintOrder(*child)) {
      if (roleOf(*inner) == Role::View && (!list || isInViewport(*inner, *list))) visit(*inner);
    }
  }
}

QQuickItem* superviewItem(const QQuickItem& item) {
  QQuickItem* above = item.parentItem();
  while (above && roleOf(*above) != Role::View) above = above->parentItem();
  // The topmost item is the scene itself.
  return above && above->parentItem() ? above : nullptr;
}

QQuickItem* viewItem(QQuickItem* item) {
  QQuickItem* shown = item;
  for (QQuickItem* at = item; at; at = at->parentItem()) {
    if (roleOf(*at) == Role::NoView) shown = at->parentItem();
  }
  while (shown && roleOf(*shown) == Role::Transparent) shown = shown->parentItem();
  return shown && shown->parentItem() ? shown : nullptr;
}

QQuickItem* itemAt(QQuickItem& root, QPointF point) {
  const Probe probe(root, point, reachOf(root));
  QQuickItem* const drawn = viewItem(probe.drawn);
  if (!probe.taker) return drawn;
  QQuickItem* const taker = viewItem(probe.taker);
  QQuickItem* const part =
      taker ? controlPartAt(*taker, taker->mapFromItem(&root, point)) : nullptr;
  if (part) return part;
  return isMeant(drawn, taker) ? drawn : taker;
}

bool isMetAt(QQuickItem& item, QPointF point) {
  const auto isRecognizing = [](const QQuickItem* child) {
    return isRecognizer(*child) && takesTouches(*child);
  };
  if (takesTouches(item) || std::ranges::any_of(item.childItems(), isRecognizing)) return true;
  if (!draws(item) && !drawsItself(kindOf(item))) return false;
  QQuickItem& root = *item.window()->contentItem();
  const QQuickItem* const taker =
      viewItem(Probe(root, item.mapToItem(&root, point), reachOf(root)).taker);
  return !taker || taker == &item || taker->isAncestorOf(&item) || item.isAncestorOf(taker);
}

bool hasTapHandler(const QQuickItem& item) {
  const auto* const hidden = QQuickItemPrivate::get(&item);
  if (hidden->hasPointerHandlers()) {
    for (const QQuickPointerHandler* const handler : hidden->extra->pointerHandlers) {
      if (handler->enabled() && handler->inherits("QQuickTapHandler")) return true;
    }
  }
  const auto takesTaps = [](const QQuickItem* area) {
    return qobject_cast<const QQuickMouseArea*>(area) && isOn(*area) && area->isVisible();
  };
  const QPointF middle(item.width() / 2, item.height() / 2);
  return takesTaps(&item) || std::ranges::any_of(item.childItems(), [&](const QQuickItem* child) {
           return takesTaps(child) && isRecognizer(*child) &&
                  child->contains(child->mapFromItem(&item, middle));
         });
}

void hideFromWalks(QQuickItem& item) {
  if (!ownItems().insert(&item).second) return;
  QObject::connect(&item, &QObject::destroyed, [](QObject* gone) { ownItems().erase(gone); });
}

}  // namespace tarni::qt
