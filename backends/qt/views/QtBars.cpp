#include "backends/qt/views/QtBars.h"

#include <QtWidgets/private/qtabbar_p.h>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QWidgetAction>

#include "backends/qt/program/QtText.h"

namespace tarni::qt {
namespace {

QTabBar& tabs(const QtBar& bar) {
  return static_cast<QTabBar&>(*bar.widget());
}

// The page that a tab opens; null in a bar that stands alone.
QWidget* pageOf(const QTabBar& bar, int index) {
  for (const QWidget* at = bar.parentWidget(); at; at = at->parentWidget()) {
    const auto* const pages = qobject_cast<const QTabWidget*>(at);
    if (pages && pages->tabBar() == &bar) return pages->widget(index);
  }
  return nullptr;
}

// What the bar keeps of a tab stays where it is: it holds values in Qt 5 and pointers in Qt 6.
template <typename Tab>
const void* addressOf(const Tab& tab) {
  return &tab;
}
template <typename Tab>
const void* addressOf(Tab* tab) {
  return tab;
}

QAction* actionOf(QtBar::Key key) {
  return reinterpret_cast<QAction*>(key);  // NOLINT(performance-no-int-to-ptr)
}

QtBar::Key keyOf(QAction* action) {
  return reinterpret_cast<QtBar::Key>(action);
}

bool isButton(QAction& action) {
  return action.isVisible() && !action.isSeparator() && !qobject_cast<QWidgetAction*>(&action);
}

}  // namespace

// ------------------------------------------------------------------------------------------ QtTabs

bool QtTabs::has(Key key) const {
  return indexOf(key) >= 0;
}

QRect QtTabs::rectOf(Key key) const {
  return tabs(*this).tabRect(indexOf(key));
}

QString QtTabs::titleOf(Key key) const {
  const int index = indexOf(key);
  for (const QString& text :
       {withoutMnemonic(tabs(*this).tabText(index)), tabs(*this).accessibleTabName(index),
        tabs(*this).tabToolTip(index)}) {
    if (!text.isEmpty()) return text;
  }
  return {};
}

bool QtTabs::isEnabled(Key key) const {
  return tabs(*this).isTabEnabled(indexOf(key));
}

std::optional<bool> QtTabs::isButtonSelected(Key key) const {
  return tabs(*this).currentIndex() == indexOf(key);
}

void QtTabs::collectKeys(std::vector<Key>& keys) const {
  for (int index = 0; index < tabs(*this).count(); ++index) {
    if (tabs(*this).isTabVisible(index)) keys.push_back(keyAt(index));
  }
}

std::optional<QtBar::Key> QtTabs::keyAt(const QPoint& point) const {
  const int index = tabs(*this).tabAt(point);
  return index >= 0 ? std::optional(keyAt(index)) : std::nullopt;
}

QObject* QtTabs::objectOf(Key key) const {
  return pageOf(tabs(*this), indexOf(key));
}

QtBar::Key QtTabs::keyAt(int index) const {
  if (const QWidget* const page = pageOf(tabs(*this), index)) {
    return reinterpret_cast<Key>(page);
  }
  const auto* const hidden = static_cast<const QTabBarPrivate*>(QObjectPrivate::get(&tabs(*this)));
  return reinterpret_cast<Key>(addressOf(hidden->tabList.at(index)));
}

int QtTabs::indexOf(Key key) const {
  int index = tabs(*this).count() - 1;
  while (index >= 0 && keyAt(index) != key) --index;
  return index;
}

// --------------------------------------------------------------------------------------- QtActions

bool QtActions::has(Key key) const {
  return widget()->actions().contains(actionOf(key));
}

QRect QtActions::rectOf(Key key) const {
  if (auto* const menu = qobject_cast<QMenu*>(widget())) return menu->actionGeometry(actionOf(key));
  return static_cast<QMenuBar*>(widget())->actionGeometry(actionOf(key));
}

QString QtActions::titleOf(Key key) const {
  // What follows a tab is a shortcut.
  return withoutMnemonic(actionOf(key)->text().section(QLatin1Char('\t'), 0, 0));
}

bool QtActions::isEnabled(Key key) const {
  return actionOf(key)->isEnabled();
}

std::optional<std::string> QtActions::identifierOf(Key key) const {
  return nonEmpty(actionOf(key)->objectName());
}

std::optional<bool> QtActions::isButtonChecked(Key key) const {
  const QAction& action = *actionOf(key);
  if (!action.isCheckable()) return std::nullopt;
  return action.isChecked();
}

std::optional<std::string> QtActions::valueOf(Key key) const {
  const auto checked = isButtonChecked(key);
  return checked ? std::optional(checkText(*checked)) : std::nullopt;
}

void QtActions::collectKeys(std::vector<Key>& keys) const {
  for (QAction* action : widget()->actions()) {
    if (isButton(*action)) keys.push_back(keyOf(action));
  }
}

std::optional<QtBar::Key> QtActions::keyAt(const QPoint& point) const {
  auto* const menu = qobject_cast<QMenu*>(widget());
  QAction* const action =
      menu ? menu->actionAt(point) : static_cast<QMenuBar*>(widget())->actionAt(point);
  if (!action || !isButton(*action)) return std::nullopt;
  return keyOf(action);
}

QObject* QtActions::objectOf(Key key) const {
  return actionOf(key);
}

}  // namespace tarni::qt
