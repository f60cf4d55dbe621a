#include "backends/qt/quick/QuickControls.h"

#include <private/qquickflickable_p.h>

#include <QtQml/qqml.h>
#include <QtCore/QCoreApplication>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QTextDocumentFragment>
#include <QtQml/QQmlContext>
#include <algorithm>
#include <vector>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/quick/QuickValues.h"
#include "backends/qt/quick/QuickWebView.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Foundation/NSException.h"

namespace tarni::qt {
namespace {

using platform::CGPoint;
using platform::Task;

std::optional<std::string> ownText(const QQuickItem& item) {
  return nonEmpty(withoutMnemonic(item.property("text").toString()));
}

std::optional<std::string> readText(const QQuickItem& item) {
  const auto format = static_cast<Qt::TextFormat>(item.property("textFormat").toInt());
  return nonEmpty(withoutMarkup(item.property("text").toString(), format));
}

// What a delegate is given, as a property of its own or in the context that it was made in.
QVariant ofDelegate(const QQuickItem& item, const char* name) {
  const QVariant own = item.property(name);
  if (own.isValid()) return own;
  const QQmlContext* const context = qmlContext(&item);
  return context ? context->contextProperty(QLatin1String(name)) : QVariant();
}

double clamped(double value, double first, double last) {
  return std::max(first, std::min(value, last));
}

}  // namespace

std::optional<std::string> shownText(const QQuickItem& item) {
  if (auto own = ownText(item)) return own;
  std::vector<const QQuickItem*> waiting{&item};
  while (!waiting.empty()) {
    const QQuickItem* const at = waiting.back();
    waiting.pop_back();
    if (at->inherits("QQuickText") && at->isVisible()) {
      if (auto found = readText(*at)) return found;
    }
    const QList<QQuickItem*> children = at->childItems();
    waiting.insert(waiting.end(), children.rbegin(), children.rend());
  }
  return std::nullopt;
}

std::shared_ptr<QuickView> makeQuickView(QQuickItem& item, QuickKind kind) {
  switch (kind) {
    case QuickKind::Label:
      return std::make_shared<QuickLabel>(item, kind);
    case QuickKind::Button:
    case QuickKind::Disclosure:
      return std::make_shared<QuickButton>(item, kind);
    case QuickKind::Switch:
      return std::make_shared<QuickSwitch>(item, kind);
    case QuickKind::TextField:
      return std::make_shared<QuickTextField>(item, kind);
    case QuickKind::TextView:
      return std::make_shared<QuickTextView>(item, kind);
    case QuickKind::ScrollView:
      return std::make_shared<QuickScrollView>(item, kind);
    case QuickKind::TableView:
    case QuickKind::CollectionView:
      return std::make_shared<QuickItems>(item, kind);
    case QuickKind::TableCell:
    case QuickKind::CollectionCell:
      return std::make_shared<QuickCell>(item, kind);
    case QuickKind::Picker:
    case QuickKind::TabBar:
      if (!hasValue(item)) return std::make_shared<QuickView>(item, kind);
      return std::make_shared<QuickWithValue<QuickView>>(item, kind);
    case QuickKind::Control:
    case QuickKind::Slider:
      if (hasValue(item)) return std::make_shared<QuickWithValue<QuickControl>>(item, kind);
      return std::make_shared<QuickControl>(item, kind);
    case QuickKind::WebView:
      return std::make_shared<QuickWebView>(item, kind);
    default:
      return std::make_shared<QuickView>(item, kind);
  }
}

Task<void> QuickControl::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

std::optional<std::string> QuickLabel::labelText() const {
  return item() ? readText(*item()) : std::nullopt;
}

std::optional<std::string> QuickButton::currentTitle() const {
  if (!item()) return std::nullopt;
  if (const char* const title = titleOfControlPart(*item())) return title;
  if (isControlPart(*item())) return shownText(*item()->parentItem());
  return titleOrName(ownText(*item()));
}

std::optional<bool> QuickButton::isSelected() const {
  if (!item() || !item()->inherits("QQuickTabButton")) return std::nullopt;
  return item()->property("checked").toBool();
}

std::optional<bool> QuickButton::isChecked() const {
  if (!item() || isSelected() || !item()->property("checkable").toBool()) return std::nullopt;
  return item()->property("checked").toBool();
}

bool QuickSwitch::isOn() const {
  return item() && item()->property("checked").toBool();
}

Task<void> QuickSwitch::setOn(bool on) {
  return performAsInput([target = QPointer(item()), on] {
    if (!target || !target->isEnabled() || target->property("checked").toBool() == on) return;
    if (!target->inherits("QQuickAbstractButton")) {
      target->setProperty("checked", on);
      return;
    }
    // As the control itself does when it is released under a finger.
    for (const char* const method : {"toggle", "toggled", "clicked"}) {
      if (target) QMetaObject::invokeMethod(target, method);
    }
  });
}

std::optional<std::string> QuickTextField::placeholder() const {
  return nonEmpty(QuickView::text("placeholderText"));
}

std::string QuickTextField::text() const {
  return utf8(QuickView::text("text"));
}

bool QuickTextField::isSecureTextEntry() const {
  return item() && item()->property("echoMode").toInt() != 0;
}

Task<void> QuickTextField::setText(std::string text) {
  return performAsInput([field = QPointer(item()), typed = QString::fromStdString(text)] {
    if (!field || !field->isEnabled() || field->property("readOnly").toBool()) return;
    QMetaObject::invokeMethod(field, "selectAll");
    if (!field) return;
    // An event that neither inserts nor replaces anything leaves the selection as it is.
    QInputMethodEvent event;
    event.setCommitString(typed, 0, typed.isEmpty() ? 1 : 0);
    QCoreApplication::sendEvent(field, &event);
  });
}

std::optional<std::string> QuickTextView::textViewText() const {
  const QString shown = text("text");
  const bool isRich = item() && item()->property("textFormat").toInt() == Qt::RichText;
  return utf8(isRich ? QTextDocumentFragment::fromHtml(shown).toPlainText() : shown);
}

CGPoint QuickScrollView::contentOffset() const {
  const auto* const flickable = qobject_cast<const QQuickFlickable*>(item());
  if (!flickable) return {};
  return {flickable->contentX() - flickable->originX(),
          flickable->contentY() - flickable->originY()};
}

Task<void> QuickScrollView::setContentOffset(CGPoint offset, bool) {
  return performAsInput([target = QPointer(qobject_cast<QQuickFlickable*>(item())), offset] {
    if (!target) return;
    QMetaObject::invokeMethod(target, "cancelFlick");
    const double lastX = target->contentWidth() - target->width() + target->rightMargin();
    const double lastY = target->contentHeight() - target->height() + target->bottomMargin();
    target->setContentX(target->originX() + clamped(offset.x, -target->leftMargin(), lastX));
    target->setContentY(target->originY() + clamped(offset.y, -target->topMargin(), lastY));
  });
}

platform::ItemPlace QuickCell::place() const {
  if (!item()) return {};
  const auto number = [this](const char* name) { return ofDelegate(*item(), name); };
  const QVariant row = number("row");
  if (row.isValid()) return {row.toInt(), number("column").toInt()};
  return {number("index").toInt(), 0};
}

std::optional<bool> QuickCell::isSelected() const {
  if (!item()) return std::nullopt;
  for (const char* const name : {"selected", "highlighted"}) {
    const QVariant own = item()->property(name);
    if (own.isValid() && own.toBool()) return true;
  }
  const QQuickItem* const list = listOfCell(*item());
  return list && list->property("currentItem").value<QQuickItem*>() == item();
}

std::optional<bool> QuickCell::isExpanded() const {
  if (!item() || !isTreeRow(*item()) || !item()->property("hasChildren").toBool()) {
    return std::nullopt;
  }
  return item()->property("expanded").toBool();
}

Task<void> QuickCell::setExpanded(bool expanded) {
  return performAsInput([row = QPointer(item()), expanded] {
    const QQuickItem* const tree = row ? listOfCell(*row) : nullptr;
    if (!tree || row->property("expanded").toBool() == expanded) return;
    QMetaObject::invokeMethod(const_cast<QQuickItem*>(tree), "toggleExpanded",
                              Q_ARG(int, ofDelegate(*row, "row").toInt()));
  });
}

Task<void> QuickCell::setCellValue(std::string /*value*/) {
  throw platform::NSException(platform::NSInvalidArgumentException, "The cell cannot be edited");
}

std::optional<std::string> QuickCell::cellText() const {
  return item() ? shownText(*item()) : std::nullopt;
}

}  // namespace tarni::qt
