#include "backends/qt/quick/QuickValues.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QMetaEnum>
#include <QtQml/QJSValue>
#include <array>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/program/ValueRefusals.h"
#include "platform/Foundation/NSException.h"

namespace tarni::qt {
namespace {

using platform::Task;
using Item = QPointer<QQuickItem>;

double number(const QQuickItem& item, const char* property) {
  return item.property(property).toDouble();
}

void tell(const Item& item, const char* signal) {
  if (item) QMetaObject::invokeMethod(item, signal);
}

// Within the bounds of the properties "from" and "to", in whichever order they stand.
double numberWithin(const QQuickItem& item, const QString& value) {
  const double first = std::min(number(item, "from"), number(item, "to"));
  const double last = std::max(number(item, "from"), number(item, "to"));
  bool isNumber = false;
  const double asked = value.toDouble(&isNumber);
  if (isNumber && asked >= first && asked <= last) return asked;
  refuseValue(value, QStringLiteral("a number from %1 to %2").arg(first).arg(last));
}

QString textOfRow(const Item& box, int row) {
  QString text;
  QMetaObject::invokeMethod(box, "textAt", Q_RETURN_ARG(QString, text), Q_ARG(int, row));
  return text;
}

void chooseRow(const Item& box, int row) {
  box->setProperty("currentIndex", row);
  if (box) QMetaObject::invokeMethod(box, "activated", Q_ARG(int, row));
}

// A line of its own, which the box looks at as after Enter in its field, if that takes it.
void typeInto(const Item& box, const QString& value) {
  const QVariant before = box->property("editText");
  box->setProperty("editText", value);
  const Item field = box ? box->property("contentItem").value<QQuickItem*>() : nullptr;
  const QVariant isTaken = field ? field->property("acceptableInput") : QVariant();
  if (isTaken.isValid() && !isTaken.toBool()) {
    box->setProperty("editText", before);
    refuseValue(value, QStringLiteral("what its field accepts can"));
  }
  tell(isTaken.isValid() ? field : box, "accepted");
}

void chooseInComboBox(const Item& box, const QString& value) {
  QStringList choices;
  const int count = box->property("count").toInt();
  for (int row = 0; row < count; ++row) {
    const QString text = textOfRow(box, row);
    choices << text;
    if (text == value) return chooseRow(box, row);
  }
  if (box->property("editable").toBool()) return typeInto(box, value);
  refuseValue(value, listed(choices));
}

QQuickItem* buttonOfTab(const Item& bar, int tab) {
  QQuickItem* button = nullptr;
  QMetaObject::invokeMethod(bar, "itemAt", Q_RETURN_ARG(QQuickItem*, button), Q_ARG(int, tab));
  return button;
}

QString titleOfTab(const Item& bar, int tab) {
  const QQuickItem* const button = buttonOfTab(bar, tab);
  return button ? withoutMnemonic(button->property("text").toString()) : QString();
}

void chooseTab(const Item& bar, int tab) {
  const Item clicked = buttonOfTab(bar, tab);
  bar->setProperty("currentIndex", tab);
  tell(clicked, "clicked");
}

void chooseInTabBar(const Item& bar, const QString& value) {
  QStringList choices;
  const int count = bar->property("count").toInt();
  for (int tab = 0; tab < count; ++tab) {
    choices << titleOfTab(bar, tab);
    if (choices.back() == value) return chooseTab(bar, tab);
  }
  refuseValue(value, listed(choices));
}

void chooseInSpinBox(const Item& box, const QString& value) {
  box->setProperty("value", static_cast<int>(numberWithin(*box, value)));
  tell(box, "valueModified");
}

void chooseInSlider(const Item& slider, const QString& value) {
  slider->setProperty("value", numberWithin(*slider, value));
  tell(slider, "moved");
}

// A property with what the control shows.
template <const char* property>
QString shownAs(const Item& control) {
  return control->property(property).toString();
}
constexpr char kDisplayText[] = "displayText";
constexpr char kValue[] = "value";

QString shownInComboBox(const Item& box) {
  const bool isEdited = box->property("editable").toBool();
  return box->property(isEdited ? "editText" : kDisplayText).toString();
}

QString titleOfCurrentTab(const Item& bar) {
  return titleOfTab(bar, bar->property("currentIndex").toInt());
}

struct ValueKind {
  const char* className;
  QString (*shown)(const Item& item);
  void (*choose)(const Item& item, const QString& value);
  QString (*textAt)(const Item& item, int place) = nullptr;  // null for what is no list
  void (*choosePlace)(const Item& item, int place) = nullptr;
};

constexpr std::array kValueKinds{
    ValueKind{"QQuickComboBox", shownInComboBox, chooseInComboBox, textOfRow, chooseRow},
    ValueKind{"QQuickSpinBox", shownAs<kDisplayText>, chooseInSpinBox},
    ValueKind{"QQuickSlider", shownAs<kValue>, chooseInSlider},
    ValueKind{"QQuickDial", shownAs<kValue>, chooseInSlider},
    ValueKind{"QQuickTabBar", titleOfCurrentTab, chooseInTabBar, titleOfTab, chooseTab},
};

const ValueKind* valueKindOf(const QQuickItem& item) {
  for (const ValueKind& kind : kValueKinds) {
    if (item.inherits(kind.className)) return &kind;
  }
  return nullptr;
}

// A box that takes any text is no list.
const ValueKind* listKindOf(const QQuickItem& item) {
  const ValueKind* const kind = valueKindOf(item);
  return kind && kind->textAt && !item.property("editable").toBool() ? kind : nullptr;
}

// The number of the row with that text; -1 when there is none.
int rowWithText(const QAbstractItemModel& model, const QString& text) {
  const QHash<int, QByteArray> names = model.roleNames();
  for (const char* const name : {"display", "text", "name", "title", "modelData"}) {
    const int role = names.key(name, -1);
    if (role < 0) continue;
    for (int row = 0; row < model.rowCount(); ++row) {
      for (int column = 0; column < model.columnCount(); ++column) {
        if (model.index(row, column).data(role).toString() == text) return row;
      }
    }
  }
  return -1;
}

int rowWithText(const QQuickItem& view, const QString& text) {
  QVariant model = view.property("model");
  if (model.canConvert<QJSValue>()) model = model.value<QJSValue>().toVariant();
  const auto* const known = qobject_cast<const QAbstractItemModel*>(model.value<QObject*>());
  if (known) return rowWithText(*known, text);
  return static_cast<int>(model.toStringList().indexOf(text));
}

// The toolkit's views name their modes themselves, and differ in their arguments.
bool moveToRow(QQuickItem& view, int row) {
  const QMetaObject& meta = *view.metaObject();
  if (view.inherits("QQuickItemView")) {
    const int modes = meta.indexOfEnumerator("PositionMode");
    const int contain = modes < 0 ? 0 : meta.enumerator(modes).keyToValue("Contain");
    return QMetaObject::invokeMethod(&view, "positionViewAtIndex", Q_ARG(int, row),
                                     Q_ARG(int, contain));
  }
  const double rows = view.property("rows").toDouble();
  if (!view.inherits("QQuickTableView") || rows <= 0) return false;
  // Its rows are about as high as each other: what is above them is loaded as they are shown.
  const double height = number(view, "contentHeight");
  const double last = std::max(0.0, height - view.height());
  return view.setProperty("contentY", std::min(height * row / rows, last));
}

// Where the model has no texts the delegates make them: they come on screen one after the other,
// as a person would look for them.
int rowWithDelegate(QQuickItem& list, const QString& text) {
  constexpr int kMostLookedAt = 5000;
  if (!list.inherits("QQuickItemView")) return -1;
  const double left = number(list, "contentX");
  const double top = number(list, "contentY");
  const int rows = std::min(list.property("count").toInt(), kMostLookedAt);
  for (int row = 0; row < rows && moveToRow(list, row); ++row) {
    QQuickItem* cell = nullptr;
    QMetaObject::invokeMethod(&list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, cell),
                              Q_ARG(int, row));
    if (cell && shownText(*cell) == utf8(text)) return row;
  }
  list.setProperty("contentX", left);
  list.setProperty("contentY", top);
  return -1;
}

}  // namespace

bool hasValue(const QQuickItem& item) {
  return valueKindOf(item) != nullptr;
}

std::string valueOfItem(QQuickItem* item) {
  const ValueKind* const kind = item ? valueKindOf(*item) : nullptr;
  return kind ? utf8(kind->shown(item)) : std::string();
}

Task<void> chooseValueOfItem(QQuickItem* item, const std::string& value) {
  return performAsInput([target = Item(item), value = QString::fromStdString(value)] {
    const ValueKind* const kind = target ? valueKindOf(*target) : nullptr;
    if (!kind) return;
    requireEnabled(target->isEnabled());
    kind->choose(target, value);
  });
}

std::vector<std::string> choicesOfItem(QQuickItem* item) {
  std::vector<std::string> choices;
  const ValueKind* const kind = item ? listKindOf(*item) : nullptr;
  const int count = kind ? item->property("count").toInt() : 0;
  for (int place = 0; place < count; ++place) choices.push_back(utf8(kind->textAt(item, place)));
  return choices;
}

std::optional<std::size_t> chosenPlaceOfItem(QQuickItem* item) {
  const int place = item && listKindOf(*item) ? item->property("currentIndex").toInt() : -1;
  return place < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(place));
}

Task<void> choosePlaceOfItem(QQuickItem* item, std::size_t place) {
  return performAsInput([target = Item(item), place = static_cast<int>(place)] {
    const ValueKind* const kind = target ? listKindOf(*target) : nullptr;
    if (!kind) return;
    requireEnabled(target->isEnabled());
    kind->choosePlace(target, place);
  });
}

long QuickItems::numberOfRows() const {
  if (!item()) return 0;
  const QVariant rows = item()->property("rows");
  return rows.isValid() ? rows.toInt() : item()->property("count").toInt();
}

long QuickItems::numberOfColumns() const {
  const QVariant columns = item() ? item()->property("columns") : QVariant();
  return columns.isValid() ? columns.toInt() : 1;
}

Task<bool> QuickItems::scrollToText(std::string text) {
  const auto isFound = std::make_shared<bool>(false);
  std::function<void()> show = [isFound, target = Item(item()),
                                text = QString::fromStdString(text)] {
    int row = target ? rowWithText(*target, text) : -1;
    if (row < 0 && target) row = rowWithDelegate(*target, text);
    *isFound = row >= 0;
    if (row < 0 || moveToRow(*target, row)) return;
    throw platform::NSException(platform::NSGenericException, "The list cannot be moved to a row");
  };
  co_await performAsInput(std::move(show));
  co_return *isFound;
}

}  // namespace tarni::qt
