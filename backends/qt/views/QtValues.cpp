#include "backends/qt/views/QtValues.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTabBar>

#include "backends/qt/program/ValueRefusals.h"

namespace tarni::qt {
namespace {

QModelIndex itemOf(const QComboBox& box, int row) {
  return box.model()->index(row, box.modelColumn(), box.rootModelIndex());
}

bool canBeChosen(const QComboBox& box, int row) {
  return itemOf(box, row).flags().testFlag(Qt::ItemIsEnabled);
}

QStringList choicesOf(const QComboBox& box) {
  QStringList choices;
  for (int row = 0; row < box.count() && choices.size() <= kMostNamed; ++row) {
    if (canBeChosen(box, row) && !box.itemText(row).isEmpty()) choices << box.itemText(row);
  }
  return choices;
}

// A line of its own, after which the box looks at it as after Enter.
void typeInto(QComboBox& box, const QString& value) {
  box.lineEdit()->selectAll();
  box.lineEdit()->insert(value);
  if (box.currentText() == value) QMetaObject::invokeMethod(box.lineEdit(), "returnPressed");
}

// What the list of the box does when a row is clicked.
void clickRow(QComboBox& box, int row) {
  QMetaObject::invokeMethod(&box, "_q_itemSelected", Q_ARG(QModelIndex, itemOf(box, row)));
}

void chooseIn(QComboBox& box, const QString& value) {
  const int row = box.findText(value, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (row >= 0 && canBeChosen(box, row)) return clickRow(box, row);
  if (!box.isEditable()) refuseValue(value, listed(choicesOf(box)));
  typeInto(box, value);
}

QString rangeOf(const QAbstractSpinBox& box) {
  if (const auto* const date = qobject_cast<const QDateTimeEdit*>(&box)) {
    return QStringLiteral("what fits %1, from %2 to %3")
        .arg(date->displayFormat(), date->minimumDateTime().toString(date->displayFormat()),
             date->maximumDateTime().toString(date->displayFormat()));
  }
  return QStringLiteral("a number from %1 to %2")
      .arg(box.property("minimum").toString(), box.property("maximum").toString());
}

void chooseIn(QAbstractSpinBox& box, const QString& value) {
  auto* const edit = box.findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
  QString typed = value;
  int cursor = static_cast<int>(typed.size());
  const bool fits =
      edit && !box.isReadOnly() && box.validate(typed, cursor) == QValidator::Acceptable;
  if (!fits) refuseValue(value, rangeOf(box));
  const QPointer<QAbstractSpinBox> alive = &box;
  edit->selectAll();
  edit->insert(typed);
  if (alive) alive->interpretText();
  if (alive) QMetaObject::invokeMethod(alive, "editingFinished");
}

void chooseIn(QAbstractSlider& slider, const QString& value) {
  bool isNumber = false;
  const int number = value.toInt(&isNumber);
  if (!isNumber || number < slider.minimum() || number > slider.maximum()) {
    refuseValue(value,
                QStringLiteral("a number from %1 to %2")
                    .arg(QString::number(slider.minimum()), QString::number(slider.maximum())));
  }
  const QPointer<QAbstractSlider> alive = &slider;
  slider.setSliderDown(true);
  if (alive) alive->setSliderPosition(number);
  if (alive) alive->setSliderDown(false);
}

bool canBeChosen(const QTabBar& bar, int tab) {
  return bar.isTabVisible(tab) && bar.isTabEnabled(tab);
}

QStringList choicesOf(const QTabBar& bar) {
  QStringList choices;
  for (int tab = 0; tab < bar.count(); ++tab) {
    if (canBeChosen(bar, tab)) choices << withoutMnemonic(bar.tabText(tab));
  }
  return choices;
}

void clickTab(QTabBar& bar, int tab) {
  const QPointer<QTabBar> alive = &bar;
  QMetaObject::invokeMethod(&bar, "tabBarClicked", Q_ARG(int, tab));
  if (alive) alive->setCurrentIndex(tab);
}

void chooseIn(QTabBar& bar, const QString& value) {
  for (int tab = 0; tab < bar.count(); ++tab) {
    const bool fits = canBeChosen(bar, tab) && withoutMnemonic(bar.tabText(tab)) == value;
    if (fits) return clickTab(bar, tab);
  }
  refuseValue(value, listed(choicesOf(bar)));
}

}  // namespace

QString valueOf(const QWidget& widget) {
  if (const auto* const box = qobject_cast<const QComboBox*>(&widget)) return box->currentText();
  if (const auto* const box = qobject_cast<const QAbstractSpinBox*>(&widget)) return box->text();
  if (const auto* const slider = qobject_cast<const QAbstractSlider*>(&widget)) {
    return QString::number(slider->value());
  }
  const auto* const bar = qobject_cast<const QTabBar*>(&widget);
  return bar ? withoutMnemonic(bar->tabText(bar->currentIndex())) : QString();
}

void chooseValueOf(QWidget& widget, const QString& value) {
  requireEnabled(widget.isEnabled());
  if (auto* const box = qobject_cast<QComboBox*>(&widget)) return chooseIn(*box, value);
  if (auto* const box = qobject_cast<QAbstractSpinBox*>(&widget)) return chooseIn(*box, value);
  if (auto* const slider = qobject_cast<QAbstractSlider*>(&widget)) return chooseIn(*slider, value);
  if (auto* const bar = qobject_cast<QTabBar*>(&widget)) return chooseIn(*bar, value);
}

// A box that takes any text is no list.
QStringList allChoicesOf(const QWidget& widget) {
  QStringList all;
  if (const auto* const box = qobject_cast<const QComboBox*>(&widget)) {
    for (int row = 0; row < box->count() && !box->isEditable(); ++row) all << box->itemText(row);
  }
  if (const auto* const bar = qobject_cast<const QTabBar*>(&widget)) {
    for (int tab = 0; tab < bar->count(); ++tab) all << withoutMnemonic(bar->tabText(tab));
  }
  return all;
}

int chosenPlaceOf(const QWidget& widget) {
  if (const auto* const box = qobject_cast<const QComboBox*>(&widget)) {
    return box->isEditable() ? -1 : box->currentIndex();
  }
  const auto* const bar = qobject_cast<const QTabBar*>(&widget);
  return bar ? bar->currentIndex() : -1;
}

void choosePlaceOf(QWidget& widget, int place) {
  requireEnabled(widget.isEnabled());
  if (auto* const box = qobject_cast<QComboBox*>(&widget)) {
    if (canBeChosen(*box, place)) return clickRow(*box, place);
    refuseValue(box->itemText(place), listed(choicesOf(*box)));
  }
  if (auto* const bar = qobject_cast<QTabBar*>(&widget)) {
    if (canBeChosen(*bar, place)) return clickTab(*bar, place);
    refuseValue(withoutMnemonic(bar->tabText(place)), listed(choicesOf(*bar)));
  }
}

}  // namespace tarni::qt
