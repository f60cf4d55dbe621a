#include "backends/qt/views/QtControls.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {
namespace {

// A check box with a third state may need a second click to get from there to where it shall be.
// More would be felt: a button that only looks like a switch does something at each.
int clicksToSet(const QAbstractButton& button) {
  const auto* const box = qobject_cast<const QCheckBox*>(&button);
  return box && box->isTristate() ? 2 : 1;
}

// A label has either a text or a picture.
bool hasPicture(const QLabel& label) {
  return label.text().isEmpty() && (label.movie() || !label.pixmap(Qt::ReturnByValue).isNull());
}

// The part of a check or radio button that a click works on; `whole` is its rectangle. A style
// takes long to say, so those that lie nowhere are left alone.
QRect clickRect(QAbstractButton& button, QStyle::SubElement element, const QRect& whole) {
  if (whole.isEmpty()) return whole;
  QStyleOptionButton option;
  option.initFrom(&button);
  option.text = button.text();
  option.icon = button.icon();
  option.iconSize = button.iconSize();
  const QRect rect = button.style()->subElementRect(element, &option, &button) & whole;
  return rect.isEmpty() ? whole : rect;
}

}  // namespace

platform::Task<void> QtControl::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

std::optional<std::string> QtLabel::labelText() const {
  const auto* const label = static_cast<QLabel*>(widget());
  if (!label) return std::nullopt;
  const QString text = withoutMarkup(label->text(), label->textFormat());
  return nonEmpty(label->buddy() ? withoutMnemonic(text) : text);
}

Kind QtLabel::kind() const {
  return hasPicture(static_cast<QLabel&>(*widget())) ? Kind::ImageView : Kind::Label;
}

QRect QtButton::shape() const {
  auto* const radio = qobject_cast<QRadioButton*>(widget());
  const QRect whole = QtView::shape();
  return radio ? clickRect(*radio, QStyle::SE_RadioButtonClickRect, whole) : whole;
}

std::optional<std::string> QtButton::currentTitle() const {
  const auto* const button = static_cast<QAbstractButton*>(widget());
  return button ? titleOrName(nonEmpty(withoutMnemonic(button->text()))) : std::nullopt;
}

std::optional<bool> QtButton::isChecked() const {
  const auto* const button = static_cast<QAbstractButton*>(widget());
  if (!button || !button->isCheckable()) return std::nullopt;
  return button->isChecked();
}

QRect QtSwitch::shape() const {
  auto* const box = qobject_cast<QCheckBox*>(widget());
  const QRect whole = QtView::shape();
  return box ? clickRect(*box, QStyle::SE_CheckBoxClickRect, whole) : whole;
}

bool QtSwitch::isOn() const {
  const auto* const button = static_cast<QAbstractButton*>(widget());
  return button && button->isChecked();
}

platform::Task<void> QtSwitch::setOn(bool on) {
  return performAsInput([button = QPointer(static_cast<QAbstractButton*>(widget())), on] {
    for (int clicks = button ? clicksToSet(*button) : 0; clicks > 0; --clicks) {
      if (button && button->isChecked() != on) button->click();
    }
  });
}

bool QtTextField::isFirstResponder() const {
  const auto* const edit = static_cast<QLineEdit*>(widget());
  return edit && QtView::isFirstResponder() && (!edit->focusProxy() || edit->isModified());
}

std::optional<std::string> QtTextField::placeholder() const {
  const auto* const edit = static_cast<QLineEdit*>(widget());
  return edit ? nonEmpty(edit->placeholderText()) : std::nullopt;
}

std::string QtTextField::text() const {
  const auto* const edit = static_cast<QLineEdit*>(widget());
  return edit ? utf8(edit->text()) : std::string();
}

bool QtTextField::isSecureTextEntry() const {
  const auto* const edit = static_cast<QLineEdit*>(widget());
  return edit && edit->echoMode() != QLineEdit::Normal;
}

platform::Task<void> QtTextField::setText(std::string text) {
  return performAsInput(
      [edit = QPointer(static_cast<QLineEdit*>(widget())), typed = QString::fromStdString(text)] {
        if (!edit || edit->isReadOnly() || !edit->isEnabled()) return;
        edit->selectAll();
        edit->insert(typed);
      });
}

}  // namespace tarni::qt
