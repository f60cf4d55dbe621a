#include "backends/qt/views/QtBars.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QWidgetAction>

#include "backends/qt/program/QtText.h"

namespace tarni::qt {
namespace {

QTabBar& tabs(const QtBar& bar) {
  return static_cast<QTabBar&>(*bar.widget());
}

int indexOf(QtBar::Key key) {
  return static_cast<int>(key);
}

std::optional<QtBar::Key> keyOf(int index) {
  if (index < 0) return std::nullopt;
  return static_cast<QtBar::Key>(index);
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
  return indexOf(key) < tabs(*this).count();
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

void QtTabs::collectKeys(std::vector<Key>& keys) const {
  for (int index = 0; index < tabs(*this).count(); ++index) {
    if (tabs(*this).isTabVisible(index)) keys.push_back(static_cast<Key>(index));
  }
}

std::optional<QtBar::Key> QtTabs::keyAt(const QPoint& point) const {
  return keyOf(tabs(*this).tabAt(point));
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

std::optional<std::string> QtActions::valueOf(Key key) const {
  const QAction& action = *actionOf(key);
  if (!action.isCheckable()) return std::nullopt;
  return checkText(action.isChecked());
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
