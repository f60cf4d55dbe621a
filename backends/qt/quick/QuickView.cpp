#include "backends/qt/quick/QuickView.h"

#include <private/qquickflickable_p.h>
#include <private/qquickitem_p.h>

#include <QtCore/QLocale>
#include <QtGui/QTransform>
#include <QtQuick/QQuickWindow>
#include <array>
#include <utility>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/quick/QmlOrigin.h"
#include "backends/qt/quick/QuickBorder.h"
#include "backends/qt/quick/QuickImage.h"
#include "backends/qt/quick/QuickReach.h"
#include "backends/qt/quick/QuickRegistry.h"
#include "backends/qt/quick/QuickScene.h"
#include "backends/qt/quick/QuickTree.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

using platform::CGPoint;
using platform::CGRect;
using platform::UIViewRef;

CGRect toCGRect(const QRectF& rect) {
  return {{rect.x(), rect.y()}, {rect.width(), rect.height()}};
}

// The first of these properties that the object has as a text that says something.
template <std::size_t count>
QString firstText(const QObject& object, const std::array<const char*, count>& properties) {
  for (const char* const property : properties) {
    const QVariant value = object.property(property);
    const bool isNumber = value.userType() == QMetaType::Double;
    const QString found = isNumber ? QString::number(value.toDouble()) : value.toString();
    if (!found.isEmpty()) return found;
  }
  return {};
}

// What is read out as the present value: the choice of a combo box, the number of a slider.
constexpr std::array kValues{"displayText", "value", "currentText"};
constexpr std::array kLabels{"text", "title"};

bool isMovedOnly(QQuickItem& item) {
  return item.scale() == 1 && item.rotation() == 0 &&
         QQuickItemPrivate::get(&item)->transforms.isEmpty();
}

QString attachedText(const QObject& object, const char* className, const char* property) {
  const QObject* const attached = attachedObject(object, className);
  return attached ? attached->property(property).toString() : QString();
}

}  // namespace

std::span<const UIViewRef> renewSubviews(ViewList& list, const QQuickItem* parent) {
  return list.renew([&](std::vector<UIViewRef>& views) {
    if (!parent) return true;
    eachSubviewItem(*parent, [&](QQuickItem& item) {
      // A view mostly stands where it stood before, which is quicker to see than to look up.
      const auto known = list.views();
      const UIViewRef* const same = views.size() < known.size() ? &known[views.size()] : nullptr;
      const bool isSame = same && static_cast<const QuickView&>(**same).item() == &item;
      views.push_back(isSame ? *same : viewOfItem(&item));
    });
    return true;
  });
}

QuickView::QuickView(QQuickItem& item, QuickKind kind)
    : item_(&item), class_(classOfItem(item, kind)) {}

QWidget* QuickView::widget() const {
  return item_ && item_->window() ? sceneHost(*item_->window()) : nullptr;
}

QWindow* QuickView::nativeWindow() const {
  return item_ && item_->window() ? topLevelOfScene(*item_->window()) : nullptr;
}

bool QuickView::takesTouches() const {
  if (!item_) return true;
  const QQuickItem* const above = item_->parentItem();
  return !isTreeRow(*item_) && !(above && isTreeRow(*above));
}

std::unique_ptr<QtBorder> QuickView::makeBorder() const {
  if (!item_ || !item_->window()) return nullptr;
  return std::make_unique<QuickBorder>(*item_);
}

UIViewRef QuickView::superview() const {
  if (!item_ || !item_->window()) return nullptr;
  if (QQuickItem* const above = superviewItem(*item_)) return viewOfItem(above);
  return viewOfScene(*item_->window());
}

std::span<const UIViewRef> QuickView::subviews() const {
  return renewSubviews(subviews_, item_);
}

platform::UIWindowRef QuickView::window() const {
  return item_ && item_->window() ? windowViewOfScene(*item_->window()) : nullptr;
}

CGRect QuickView::bounds() const {
  return toCGRect({{}, part().size()});
}

CGRect QuickView::frame() const {
  if (!item_) return {};
  const QQuickItem* const above = superviewItem(*item_);
  if (!above) {
    const QPointF origin =
        item_->window() ? shownPartOfScene(*item_->window()).topLeft() : QPointF();
    return toCGRect(item_->mapRectToScene(part()).translated(-origin));
  }
  return toCGRect(item_->mapRectToItem(above, part()).translated(-shownPart(*above).topLeft()));
}

platform::CGAffineTransform QuickView::transform() const {
  if (!item_) return {};
  QQuickItem* const above = superviewItem(*item_);
  QQuickItem* at = item_;
  while (at && at != above && isMovedOnly(*at)) at = at->parentItem();
  if (at == above) return {};
  const QTransform whole = item_->itemTransform(above, nullptr);
  return {whole.m11(), whole.m12(), whole.m21(), whole.m22()};
}

CGPoint QuickView::convertPointToWindow(CGPoint point) const {
  if (!item_ || !item_->window()) return point;
  const QPointF own = part().topLeft() + QPointF(point.x, point.y);
  const QPointF inScene = item_->mapToScene(own) + originOfScene(*item_->window());
  return {inScene.x(), inScene.y()};
}

CGPoint QuickView::convertPointFromWindow(CGPoint point) const {
  if (!item_ || !item_->window()) return point;
  const QPointF inScene = QPointF(point.x, point.y) - originOfScene(*item_->window());
  const QPointF own = item_->mapFromScene(inScene) - part().topLeft();
  return {own.x(), own.y()};
}

UIViewRef QuickView::hitTest(CGPoint point) const {
  if (!item_ || !item_->isVisible()) return nullptr;
  const QPointF at = part().topLeft() + QPointF(point.x, point.y);
  QQuickItem* const met = itemAt(*item_, at);
  if (met && (met == item_ || item_->isAncestorOf(met))) return viewOfItem(met);
  return item_->contains(at) ? std::const_pointer_cast<UIView>(shared_from_this()) : nullptr;
}

// As in UIKit an item below a hidden one need not be hidden itself, but one that is wholly
// transparent is nothing that anybody sees.
bool QuickView::isHidden() const {
  return !item_ || !QQuickItemPrivate::get(item_)->explicitVisible || item_->opacity() <= 0;
}

bool QuickView::canBeFound() const {
  const bool isShown = item_ && item_->window() && item_->isVisible();
  const QQuickItem* at = isShown ? item_.data() : nullptr;
  while (at && at->opacity() > 0 && at->parentItem()) at = at->parentItem();
  if (!at || at->opacity() <= 0) return false;
  const QRectF shown = part();
  return !shown.isEmpty() && isMetAt(*item_, shown.center());
}

bool QuickView::clipsToBounds() const {
  return item_ && (item_->clip() || qobject_cast<QQuickFlickable*>(item_.data()));
}

bool QuickView::isUserInteractionEnabled() const {
  return item_ && item_->isEnabled();
}

bool QuickView::isFirstResponder() const {
  return item_ && item_->window() && focusItemOfScene(*item_->window()) == item_;
}

bool QuickView::canBecomeFirstResponder() const {
  return item_ && item_->isEnabled() && item_->flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

platform::Task<void> QuickView::becomeFirstResponder() {
  return performAsInput([target = item_] {
    if (target) target->forceActiveFocus(Qt::OtherFocusReason);
  });
}

std::span<const platform::Class> QuickView::gestureRecognizers() const {
  static const platform::Class kTap[] = {platform::uikit::UITapGestureRecognizer};
  return item_ && hasTapHandler(*item_) ? std::span<const platform::Class>(kTap)
                                        : std::span<const platform::Class>();
}

std::optional<std::string> QuickView::accessibilityIdentifier() const {
  if (!item_) return std::nullopt;
  const QObject* const popup = popupOfItem(*item_);
  const QObject& named = popup ? *popup : *item_;
  // What the toolkit makes in C++ it names for itself.
  if (isDeclared(named) && !named.objectName().isEmpty()) return utf8(named.objectName());
  return nonEmpty(idOf(named));
}

std::optional<std::string> QuickView::accessibilityLanguage() const {
  if (!item_) return std::nullopt;
  const QVariant own = item_->property("locale");
  return nonEmpty((own.isValid() ? own.toLocale() : QLocale()).bcp47Name());
}

std::optional<std::string> QuickView::accessibilityValue() const {
  if (!item_) return std::nullopt;
  const QString value = firstText(*item_, kValues);
  if (!value.isEmpty()) return utf8(value);
  // A value stands in front of the label: a check box is called by its label, and a switch is asked
  // for its state.
  const bool isCheckable = item_->property("checkable").toBool();
  if (isCheckable && !accessibilityLabel()) return checkText(item_->property("checked").toBool());
  return std::nullopt;
}

std::optional<std::string> QuickView::accessibilityLabel() const {
  if (!item_) return std::nullopt;
  const QString told = attachedText(*item_, "QQuickAccessibleAttached", "name");
  if (!told.isEmpty()) return utf8(told);
  // The text of a field is its value.
  const QVariant placeholder = item_->property("placeholderText");
  if (placeholder.isValid()) return nonEmpty(placeholder.toString());
  const QObject* const popup = popupOfItem(*item_);
  return nonEmpty(withoutMnemonic(firstText(popup ? *popup : *item_, kLabels)));
}

std::optional<std::string> QuickView::accessibilityHint() const {
  if (!item_) return std::nullopt;
  const QString tip = attachedText(*item_, "QQuickToolTipAttached", "text");
  if (!tip.isEmpty()) return utf8(withoutMarkup(tip));
  return nonEmpty(attachedText(*item_, "QQuickAccessibleAttached", "description"));
}

platform::Task<platform::UIImageRef> QuickView::drawViewHierarchy() {
  if (!item_ || !item_->window()) co_return nullptr;
  co_return co_await drawScene(*item_->window(), item_->mapRectToScene(part()));
}

QRectF QuickView::part() const {
  return item_ ? shownPart(*item_) : QRectF();
}

QString QuickView::text(const char* property) const {
  return item_ ? item_->property(property).toString() : QString();
}

}  // namespace tarni::qt
