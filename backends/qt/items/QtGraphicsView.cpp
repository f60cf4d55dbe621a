#include "backends/qt/items/QtGraphicsView.h"

#include <private/qgraphicsitem_p.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QGraphicsProxyWidget>
#include <QtWidgets/QGraphicsView>
#include <algorithm>
#include <unordered_set>
#include <utility>

#include "backends/qt/program/QtText.h"
#include "backends/qt/program/Stillness.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

using platform::UIViewRef;

// In the viewport.
QRect rectOnViewport(const QGraphicsView& view, const QGraphicsItem& item) {
  QRectF rect = item.boundingRect();
  if (item.isClipped()) rect &= item.clipPath().boundingRect();
  const QRectF placed = item.deviceTransform(view.viewportTransform()).mapRect(rect);
  return placed.toAlignedRect() & view.viewport()->rect();
}

bool takesClicks(const QGraphicsItem& item) {
  constexpr auto kActive = QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsMovable |
                           QGraphicsItem::ItemIsFocusable;
  return item.acceptedMouseButtons() != Qt::NoButton && (item.flags() & kActive);
}

bool isText(const QGraphicsItem& item) {
  return dynamic_cast<const QGraphicsTextItem*>(&item) ||
         dynamic_cast<const QGraphicsSimpleTextItem*>(&item);
}

QString nameOfWidgetIn(const QGraphicsItem& item) {
  const auto* const proxy = dynamic_cast<const QGraphicsProxyWidget*>(&item);
  QWidget* const embedded = proxy ? proxy->widget() : nullptr;
  QAccessibleInterface* const interface =
      embedded ? QAccessible::queryAccessibleInterface(embedded) : nullptr;
  return interface ? withoutMnemonic(interface->text(QAccessible::Name)) : QString();
}

}  // namespace

// ------------------------------------------------------------------------------------- QtSceneItem

// The toolkit sets every pointer that is noted as a focus proxy's to null when the item leaves its
// scene or is deleted. It is the only word of that which an item gives.
QtSceneItem::QtSceneItem(QGraphicsItem& item) : item_(&item) {
  QGraphicsItemPrivate::get(item_)->focusProxyRefs.append(&item_);
}

QtSceneItem::~QtSceneItem() {
  if (item_) QGraphicsItemPrivate::get(item_)->focusProxyRefs.removeOne(&item_);
}

// ---------------------------------------------------------------------------------- QtGraphicsItem

bool QtGraphicsItem::exists() const {
  return item() && item()->scene() &&
         item()->scene() == static_cast<QGraphicsView*>(owner()->widget())->scene();
}

QRect QtGraphicsItem::shape() const {
  const auto* const view = static_cast<const QGraphicsView*>(widget());
  return view ? rectOnViewport(*view, *item()).translated(view->viewport()->pos()) : QRect();
}

bool QtGraphicsItem::isHidden() const {
  return !widget() || !item()->isVisible() || shape().isEmpty();
}

bool QtGraphicsItem::isUserInteractionEnabled() const {
  const QWidget* const view = widget();
  return view && view->isEnabled() && item()->isEnabled();
}

std::optional<std::string> QtGraphicsItem::accessibilityIdentifier() const {
  const QGraphicsObject* const object = widget() ? item()->toGraphicsObject() : nullptr;
  return object ? nonEmpty(object->objectName()) : std::nullopt;
}

std::optional<std::string> QtGraphicsItem::accessibilityLabel() const {
  if (!widget()) return std::nullopt;
  if (!item()->toolTip().isEmpty()) return utf8(withoutMarkup(item()->toolTip()));
  return nonEmpty(nameOfWidgetIn(*item()));
}

std::optional<std::string> QtGraphicsText::labelText() const {
  if (!widget()) return std::nullopt;
  if (const auto* const rich = dynamic_cast<const QGraphicsTextItem*>(item())) {
    return nonEmpty(rich->toPlainText());
  }
  return nonEmpty(static_cast<const QGraphicsSimpleTextItem*>(item())->text());
}

platform::Task<void> QtGraphicsControl::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

// ---------------------------------------------------------------------------------- QtGraphicsView

QGraphicsView& QtGraphicsView::graphicsView() const {
  return static_cast<QGraphicsView&>(*widget());
}

void QtGraphicsView::appendParts(std::vector<UIViewRef>& views) const {
  renewItems();
  views.insert(views.end(), items_.begin(), items_.end());
}

UIViewRef QtGraphicsView::partAt(const QPoint& point) const {
  const QWidget& viewport = *graphicsView().viewport();
  const QPoint inside = point - viewport.pos();
  const QGraphicsItem* const item =
      viewport.rect().contains(inside) ? graphicsView().itemAt(inside) : nullptr;
  if (!item) return nullptr;
  // All of the items for each point are a long look in a scene of many.
  static const char key = 0;
  auto* const renewed = keptWhileStill<std::unordered_set<const QtGraphicsView*>>(&key);
  if (!renewed || renewed->insert(this).second) renewItems();
  const auto found = known_.find(item);
  return found == known_.end() ? nullptr : found->second;
}

void QtGraphicsView::renewItems() const {
  QList<QGraphicsItem*> backToFront = graphicsView().items(graphicsView().viewport()->rect());
  std::reverse(backToFront.begin(), backToFront.end());
  const auto fits = [](const QGraphicsItem* item, const auto& known) {
    return known->item() == item;
  };
  if (std::equal(backToFront.cbegin(), backToFront.cend(), items_.begin(), items_.end(), fits)) {
    return;
  }
  decltype(known_) renewed;
  items_.clear();
  for (QGraphicsItem* const item : std::as_const(backToFront)) {
    const auto same = known_.find(item);
    const bool isSame = same != known_.end() && same->second->item() == item;
    items_.push_back(isSame ? same->second : makeItem(*item));
    renewed.emplace(item, items_.back());
  }
  known_ = std::move(renewed);
}

std::shared_ptr<QtGraphicsItem> QtGraphicsView::makeItem(QGraphicsItem& item) const {
  namespace uikit = platform::uikit;
  auto self = std::static_pointer_cast<const QtView>(shared_from_this());
  if (isText(item)) return std::make_shared<QtGraphicsText>(std::move(self), uikit::UILabel, item);
  if (dynamic_cast<QGraphicsPixmapItem*>(&item)) {
    return std::make_shared<QtGraphicsItem>(std::move(self), uikit::UIImageView, item);
  }
  if (takesClicks(item)) {
    return std::make_shared<QtGraphicsControl>(std::move(self), uikit::UIControl, item);
  }
  return std::make_shared<QtGraphicsItem>(std::move(self), uikit::UIView, item);
}

}  // namespace tarni::qt
