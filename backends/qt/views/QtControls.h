// The views of labels, buttons, check boxes and text fields. GUI thread.
#pragma once

#include "backends/qt/views/QtView.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::qt {

class QtControl : public QtView, public platform::UIControl {
 public:
  using QtView::QtView;
  // Nothing to send: what changes a widget here makes the program's slots run by itself.
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
};

// A label; one with a picture is an image view.
class QtLabel final : public QtView, public platform::UILabel {
 public:
  using QtView::QtView;
  // The text as it is read, without markup.
  std::optional<std::string> labelText() const override;

 protected:
  Kind kind() const override;
};

// Its rectangle is the part that a click works on: a radio button in a layout may be far wider than
// what it draws, and ignores a click on its middle then.
class QtButton : public QtControl, public platform::UIButton {
 public:
  using QtControl::QtControl;
  QRect shape() const override;
  std::optional<std::string> currentTitle() const override;
  std::optional<bool> isChecked() const override;
};

class QtSwitch final : public QtControl, public platform::UISwitch {
 public:
  using QtControl::QtControl;
  QRect shape() const override;
  bool isOn() const override;
  // Clicks until the state fits. In this toolkit a state cannot be set unheard (a check box says
  // that it was toggled, whoever did it), so the program hears of it as of a person's click.
  platform::Task<void> setOn(bool on) override;
};

class QtTextField final : public QtControl, public platform::UITextField {
 public:
  using QtControl::QtControl;
  // The field in a spin box or a combo box leaves the focus to its box, which has it as well when
  // its arrows are used: such a field is edited from when somebody types until the box sets its
  // text.
  bool isFirstResponder() const override;
  std::optional<std::string> placeholder() const override;
  // As the program has it: a password in clear.
  std::string text() const override;
  // Replaces the text as a keyboard would: validators and the length limit hold, the program hears
  // of one edit, and the person can undo it. A field that takes no keys stays as it is.
  platform::Task<void> setText(std::string text) override;
  bool isSecureTextEntry() const override;
};

}  // namespace tarni::qt
