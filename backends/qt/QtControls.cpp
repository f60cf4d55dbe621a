#include "backends/qt/QtControls.h"

#include <QtGui/QPicture>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

#include "backends/qt/QtText.h"
#include "backends/qt/ViewRegistry.h"

namespace tarni::qt {
namespace {

// The number of states of a check box with a third one.
constexpr int kCheckStates = 3;

bool hasPicture(const QLabel& label) {
  return !label.pixmap(Qt::ReturnByValue).isNull() || label.movie() ||
         !label.picture(Qt::ReturnByValue).isNull();
}

// The part of a check or radio button that a click works on.
QRect clickRect(QAbstractButton& button, QStyle::SubElement element) {
  QStyleOptionButton option;
  option.initFrom(&button);
  option.text = button.text();
  option.icon = button.icon();
  option.iconSize = button.iconSize();
  const QRect rect = button.style()->subElementRect(element, &option, &button) & button.rect();
  return rect.isEmpty() ? button.rect() : rect;
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
  return radio ? clickRect(*radio, QStyle::SE_RadioButtonClickRect) : QtView::shape();
}

std::optional<std::string> QtButton::currentTitle() const {
  const auto* const button = static_cast<QAbstractButton*>(widget());
  return button ? nonEmpty(withoutMnemonic(button->text())) : std::nullopt;
}

QRect QtSwitch::shape() const {
  auto* const box = qobject_cast<QCheckBox*>(widget());
  return box ? clickRect(*box, QStyle::SE_CheckBoxClickRect) : QtView::shape();
}

bool QtSwitch::isOn() const {
  const auto* const button = static_cast<QAbstractButton*>(widget());
  return button && button->isChecked();
}

platform::Task<void> QtSwitch::setOn(bool on) {
  return performInProgram([button = QPointer(static_cast<QAbstractButton*>(widget())), on] {
    for (int clicks = 0; clicks < kCheckStates && button && button->isChecked() != on; ++clicks) {
      button->click();
    }
  });
}

std::optional<std::string> QtTextField::placeholder() const {
  const auto* const edit = static_cast<QLineEdit*>(widget());
  return edit ? nonEmpty(edit->placeholderText()) : std::nullopt;
}

std::string QtTextField::text() const {
  const auto* const edit = static_cast<QLineEdit*>(widget());
  return edit ? utf8(edit->text()) : std::string();
}

platform::Task<void> QtTextField::setText(std::string text) {
  return performInProgram(
      [edit = QPointer(static_cast<QLineEdit*>(widget())), typed = QString::fromStdString(text)] {
        if (!edit || edit->isReadOnly() || !edit->isEnabled()) return;
        edit->selectAll();
        edit->insert(typed);
      });
}

}  // namespace tarni::qt
