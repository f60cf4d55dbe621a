#include "backends/qt/views/QtView.h"

#include <QtGui/QAccessible>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <algorithm>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtProgram.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/program/Stillness.h"
#include "backends/qt/views/ChildSearch.h"
#include "backends/qt/views/QtPopup.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {
namespace {

using platform::CGPoint;
using platform::UIViewRef;

// What the toolkit tells screen readers, asked without switching its accessibility on.
QAccessibleInterface* accessible(QWidget* widget) {
  return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

// The children that a label beside them is the label of.
std::unordered_set<const QWidget*> labelledChildren(const QWidget& parent) {
  std::unordered_set<const QWidget*> labelled;
  for (const QObject* const child : parent.children()) {
    const auto* const label = qobject_cast<const QLabel*>(child);
    if (label && label->buddy()) labelled.insert(label->buddy());
  }
  return labelled;
}

// True when the toolkit's own name for a widget that has none is that of something beside or round
// it, which it looks for among all siblings. So is it when that is not known.
bool isNamedByOthers(const QWidget& widget) {
  using Labelled = std::unordered_map<const QWidget*, std::unordered_set<const QWidget*>>;
  static const char key = 0;
  const QWidget* const parent = widget.parentWidget();
  auto* const known = parent ? keptWhileStill<Labelled>(&key) : nullptr;
  if (!known || widget.isWindow() || qobject_cast<const QGroupBox*>(parent)) return true;
  const auto [place, isNew] = known->try_emplace(parent);
  if (isNew) place->second = labelledChildren(*parent);
  return place->second.contains(&widget);
}

// Whether the toolkit knows no name for the widget but that of something beside or round it. Only
// interfaces of the toolkit's own are of these types; all but one are private to it.
bool isNameless(const QAccessibleInterface& interface, const QWidget& widget) {
  constexpr std::string_view kNameless[] = {
      "17QAccessibleWidget",        "17QAccessibleButton",          "21QAccessibleToolButton",
      "19QAccessibleLineEdit",      "26QAccessibleAbstractSpinBox", "18QAccessibleSpinBox",
      "24QAccessibleDoubleSpinBox", "17QAccessibleSlider",          "20QAccessibleScrollBar"};
  const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
  if (button && !button->text().isEmpty()) return false;
  return std::ranges::find(kNameless, typeid(interface).name()) != std::end(kNameless);
}

QString accessibleName(QWidget& widget) {
  QAccessibleInterface* const interface = accessible(&widget);
  if (!interface) return {};
  if (isNameless(*interface, widget) && !isNamedByOthers(widget)) return {};
  return interface->text(QAccessible::Name);
}

// Calls `visit` for every child widget that is not a window until it answers false.
template <typename Visit>
bool everyChild(const QObject& parent, Visit&& visit) {
  for (QObject* child : parent.children()) {
    if (!child->isWidgetType()) continue;
    auto& widget = static_cast<QWidget&>(*child);
    if (!widget.isWindow() && !visit(widget)) return false;
  }
  return true;
}

QWidget* childAt(QWidget& widget, QPoint point) {
  static const char key = 0;
  auto* const search = keptWhileStill<ChildSearch>(&key);
  return search ? search->childAt(widget, point) : widget.childAt(point);
}

// False for a widget that was neither shown nor sized yet, as in a page that nobody opened: its
// rectangle is the toolkit's placeholder.
bool isLaidOut(const QWidget& widget) {
  return widget.isVisible() || widget.testAttribute(Qt::WA_Resized) ||
         widget.testAttribute(Qt::WA_WState_Created);
}

}  // namespace

QtView::QtView(QWidget& widget, Kind kind)
    : widget_(&widget),
      class_(classFor(widget.metaObject(), kind)),
      kind_(kind),
      classKind_(kind) {}

QRect QtView::shape() const {
  return widget_ && isLaidOut(*widget_) ? widget_->rect() : QRect();
}

// A popup is a window whatever it shows: it stands for what it was opened from, and what closes it
// stands in it.
bool QtView::isInSoleWindow() const {
  if (!widget_ || !widget_->isWindow() || widget_->windowType() == Qt::Popup) return false;
  return kind_ != Kind::View && kind_ != Kind::Menu && kind_ != Kind::WebView;
}

bool QtView::isWindow() const {
  return widget_ && widget_->isWindow() && !isInSoleWindow();
}

QWindow* QtView::ownWindow() const {
  return isWindow() ? widget_->windowHandle() : nullptr;
}

platform::Class QtView::getClass() const {
  if (!widget_) return class_;
  const Kind now = isWindow() ? Kind::Window : kind();
  if (now != classKind_) {
    classKind_ = now;
    class_ = classFor(widget_->metaObject(), now);
  }
  return class_;
}

UIViewRef QtView::superview() const {
  if (isInSoleWindow()) return windowOfWidget(widget_);
  return widget_ && !widget_->isWindow() ? viewOfWidget(widget_->parentWidget()) : nullptr;
}

template <typename Visit>
bool QtView::everySubwidget(Visit&& visit) const {
  if (!widget_) return true;
  const QWidget* const transparent = transparentChild();
  return everyChild(*widget_, [&](QWidget& child) {
    return &child == transparent ? everyChild(child, visit) : visit(child);
  });
}

std::span<const UIViewRef> QtView::subviews() const {
  return subviews_.renew([this](std::vector<UIViewRef>& views) {
    if (widget_) appendParts(views);
    const UIViewRef outside = this->outside();
    if (views.empty() && !outside && isUpToDate()) return false;
    everySubwidget([&views](QWidget& child) {
      if (UIViewRef view = viewOfWidget(&child)) views.push_back(std::move(view));
      return true;
    });
    if (outside) {
      appendOrigins(*widget_, views);
      views.push_back(outside);
    }
    return true;
  });
}

UIViewRef QtView::outside() const {
  const bool isPopup = isWindow() && widget_ == openPopup();
  return isPopup ? QtPopupOutside::shared() : nullptr;
}

// Of a list without parts, which is quicker to see than to collect it anew.
bool QtView::isUpToDate() const {
  const std::span<const UIViewRef> known = subviews_.views();
  std::size_t count = 0;
  const bool allStandThere = everySubwidget([&](const QWidget& child) {
    if (count == known.size()) return false;
    return static_cast<const QtViewCore&>(*known[count++]).widget() == &child;
  });
  return allStandThere && count == known.size();
}

platform::CGRect QtView::frame() const {
  if (!widget_) return {};
  const QRect own = shownShape();
  if (isWindow()) return toCGRect({widget_->mapToGlobal(own.topLeft()), own.size()});
  if (widget_->isWindow()) return toCGRect(own);
  QPoint origin = widget_->pos();
  const QWidget* const parent = widget_->parentWidget();
  if (scrollAreaOfViewport(parent)) origin += parent->pos();
  if (const UIViewRef above = superview()) {
    origin -= static_cast<const QtView&>(*above).shownShape().topLeft();
  }
  return toCGRect(own.translated(origin));
}

UIViewRef QtView::hitTest(CGPoint point) const {
  if (!widget_ || !widget_->isVisible()) return nullptr;
  const QPoint at = toQPoint(point) + shownShape().topLeft();
  if (!bounds().contains(point)) {
    return QGuiApplication::screenAt(widget_->mapToGlobal(at)) ? outside() : nullptr;
  }
  QWidget* hit = childAt(*widget_, at);
  UIViewRef view;
  // Widgets of the agent have no view; what is under them counts.
  while (hit && !(view = viewOfWidget(hit)) && hit != widget_) hit = hit->parentWidget();
  if (!view) view = std::const_pointer_cast<UIView>(shared_from_this());
  const auto& deepest = static_cast<const QtView&>(*view);
  const UIViewRef part = deepest.partAt(deepest.widget()->mapFrom(widget_, at));
  return part ? part : view;
}

bool QtView::isHidden() const {
  if (!widget_) return true;
  return widget_->isWindow() ? !widget_->isVisible() : widget_->isHidden();
}

bool QtView::isOpaque() const {
  if (!widget_) return false;
  if (isWindow()) return !widget_->testAttribute(Qt::WA_TranslucentBackground);
  return widget_->testAttribute(Qt::WA_OpaquePaintEvent) || widget_->autoFillBackground();
}

bool QtView::isUserInteractionEnabled() const {
  return widget_ && widget_->isEnabled();
}

bool QtView::isFirstResponder() const {
  // Asked of the window, which remembers it while another one is active. The input inside a spin
  // box or a combo box leaves the focus to its box, an editor's frame to what is inside it; a
  // button that leaves it to another widget has none.
  const QWidget* holder = widget_;
  while (holder && holder->focusProxy()) holder = holder->focusProxy();
  return holder && holder->window()->focusWidget() == holder &&
         (holder->isAncestorOf(widget_) || widget_->isAncestorOf(holder));
}

bool QtView::canBecomeFirstResponder() const {
  return widget_ && widget_->isEnabled() && widget_->focusPolicy() != Qt::NoFocus &&
         widget_->testAttribute(Qt::WA_InputMethodEnabled);
}

platform::Task<void> QtView::becomeFirstResponder() {
  return performAsInput([target = widget_] {
    if (target) target->setFocus(Qt::OtherFocusReason);
  });
}

std::optional<std::string> QtView::accessibilityIdentifier() const {
  if (!widget_) return std::nullopt;
  const QString name = widget_->objectName();
  // The toolkit names its own inner widgets so.
  if (name.startsWith(QLatin1String("qt_"))) return std::nullopt;
  return nonEmpty(name);
}

std::optional<std::string> QtView::accessibilityValue() const {
  QAccessibleInterface* const interface = accessible(widget_);
  if (!interface) return std::nullopt;
  const QString value = interface->text(QAccessible::Value);
  if (!value.isEmpty()) return utf8(value);
  // A value stands in front of the label: a check box is called by its label, and a switch is asked
  // for its state.
  const QAccessible::State state = interface->state();
  if (state.checkable && !accessibilityLabel()) return checkText(state.checked);
  return std::nullopt;
}

std::optional<std::string> QtView::accessibilityLabel() const {
  if (!widget_) return std::nullopt;
  if (!widget_->accessibleName().isEmpty()) return utf8(widget_->accessibleName());
  return nonEmpty(withoutMnemonic(accessibleName(*widget_)));
}

std::optional<std::string> QtView::accessibilityHint() const {
  if (!widget_) return std::nullopt;
  if (!widget_->toolTip().isEmpty()) return utf8(withoutMarkup(widget_->toolTip()));
  return nonEmpty(widget_->accessibleDescription());
}

}  // namespace tarni::qt
