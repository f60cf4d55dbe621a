#include "backends/qt/views/QtPopup.h"

#include <QtWidgets/private/qmenu_p.h>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <algorithm>
#include <array>

#include "backends/qt/views/ViewRegistry.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

// Where a menu was opened from: a menu or menu bar and its entry there. Null for anything else.
struct Origin {
  explicit Origin(const QWidget& popup) {
    const auto* const opened = qobject_cast<const QMenu*>(&popup);
    if (!opened) return;
    const auto& cause = QMenuPrivate::get(const_cast<QMenu*>(opened))->causedPopup;
    menu = qobject_cast<QMenu*>(cause.widget);
    bar = qobject_cast<QMenuBar*>(cause.widget);
    action = cause.action;
  }
  QWidget* widget() const { return menu ? static_cast<QWidget*>(menu) : bar; }
  QRect place() const {
    return menu ? menu->actionGeometry(action) : bar ? bar->actionGeometry(action) : QRect();
  }

  QMenu* menu = nullptr;
  QMenuBar* bar = nullptr;
  QAction* action = nullptr;
};

// As a menu itself goes from menu to menu when it passes a press on.
template <typename Visit>
void eachOrigin(const QWidget& popup, Visit&& visit) {
  for (Origin origin(popup); origin.widget(); origin = Origin(*origin.widget())) visit(origin);
}

QRect onScreen(const QWidget& widget) {
  return {widget.mapToGlobal(QPoint()), widget.size()};
}

int areaOf(const QRect& rect) {
  return rect.isValid() ? rect.width() * rect.height() : 0;
}

}  // namespace

QWidget* openPopup() {
  QWidget* const popup = QApplication::activePopupWidget();
  const QWidget* const typedInto = popup ? popup->focusProxy() : nullptr;
  return typedInto && typedInto->window() != popup ? nullptr : popup;
}

QWidget* windowPressedBesidePopup(QPoint point) {
  QWidget* const popup = openPopup();
  if (!popup || onScreen(*popup).contains(point)) return popup;
  QWidget* pressed = popup;
  eachOrigin(*popup, [&](const Origin& origin) {
    const QWidget& widget = *origin.widget();
    if (pressed != popup || !onScreen(widget).contains(point)) return;
    // The entry of a menu bar closes its menu when it is pressed again.
    const bool closes = origin.bar && origin.place().contains(widget.mapFromGlobal(point));
    if (!closes) pressed = widget.window();
  });
  return pressed;
}

platform::UIViewRef openerOf(const QWidget& popup) {
  const Origin origin(popup);
  if (!origin.widget()) return nullptr;
  const QPoint middle = origin.place().center();
  return viewOfWidget(origin.widget())->hitTest({double(middle.x()), double(middle.y())});
}

void appendOrigins(const QWidget& popup, std::vector<platform::UIViewRef>& views) {
  eachOrigin(popup, [&](const Origin& origin) { views.push_back(viewOfWidget(origin.widget())); });
}

const std::shared_ptr<QtPopupOutside>& QtPopupOutside::shared() {
  static const auto* const only =
      new std::shared_ptr<QtPopupOutside>(std::make_shared<QtPopupOutside>());
  return *only;
}

platform::Class QtPopupOutside::getClass() const {
  return platform::uikit::UIButton;
}

platform::UIViewRef QtPopupOutside::superview() const {
  return viewOfWidget(openPopup());
}

platform::UIViewRef QtPopupOutside::hitTest(platform::CGPoint point) const {
  return bounds().contains(point) ? std::const_pointer_cast<UIView>(shared_from_this()) : nullptr;
}

platform::Task<void> QtPopupOutside::becomeFirstResponder() {
  co_return;
}

QRect QtPopupOutside::shape() const {
  const QWidget* const popup = widget();
  if (!popup) return {};
  const QRect screen = popup->screen()->geometry();
  QRect taken = onScreen(*popup);
  eachOrigin(*popup, [&](const Origin& origin) { taken |= onScreen(*origin.widget()); });
  QRect left = screen;
  left.setRight(taken.left() - 1);
  QRect right = screen;
  right.setLeft(taken.right() + 1);
  QRect above = screen;
  above.setBottom(taken.top() - 1);
  QRect below = screen;
  below.setTop(taken.bottom() + 1);
  const std::array free{left, right, above, below};
  return std::ranges::max(free, {}, areaOf).translated(-popup->mapToGlobal(QPoint()));
}

std::optional<std::string> QtPopupOutside::accessibilityIdentifier() const {
  return "PopoverDismissRegion";
}

platform::Task<void> QtPopupOutside::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

}  // namespace tarni::qt
