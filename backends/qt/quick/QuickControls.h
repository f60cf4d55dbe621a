// The views of texts, buttons, switches, fields, flickables and delegates. GUI thread.
#pragma once

#include "backends/qt/quick/QuickView.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::qt {

// The item's own text, or the first that stands in it; null for none.
std::optional<std::string> shownText(const QQuickItem& item);

std::shared_ptr<QuickView> makeQuickView(QQuickItem& item, QuickKind kind);

class QuickControl : public QuickView, public platform::UIControl {
 public:
  using QuickView::QuickView;
  // Nothing to send: what changes an item here makes the program's handlers run by itself.
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
};

class QuickLabel final : public QuickView, public platform::UILabel {
 public:
  using QuickView::QuickView;
  // The text as it is read, without markup.
  std::optional<std::string> labelText() const override;
};

class QuickButton final : public QuickControl, public platform::UIButton {
 public:
  using QuickControl::QuickControl;
  std::optional<std::string> currentTitle() const override;
  std::optional<bool> isSelected() const override;
  std::optional<bool> isChecked() const override;
};

class QuickSwitch final : public QuickControl, public platform::UISwitch {
 public:
  using QuickControl::QuickControl;
  bool isOn() const override;
  // Toggles it as a click does: the program hears that it was toggled and clicked.
  platform::Task<void> setOn(bool on) override;
};

class QuickTextField final : public QuickControl, public platform::UITextField {
 public:
  using QuickControl::QuickControl;
  std::optional<std::string> placeholder() const override;
  // As the program has it: a password in clear.
  std::string text() const override;
  // Replaces what is there as an input method does, whole: validators, masks and the length limit
  // hold, and the program hears once that it was edited, of no keys. A field that a person could
  // not type into stays as it is.
  platform::Task<void> setText(std::string text) override;
  bool isSecureTextEntry() const override;
};

class QuickTextView final : public QuickView, public platform::UITextView {
 public:
  using QuickView::QuickView;
  std::optional<std::string> textViewText() const override;
};

class QuickScrollView : public QuickView, public platform::UIScrollView {
 public:
  using QuickView::QuickView;
  platform::CGPoint contentOffset() const override;
  // Moves at once, as far as there is content; a movement under way ends.
  platform::Task<void> setContentOffset(platform::CGPoint offset, bool animated) override;
};

// A delegate of a list, a table or a grid.
class QuickCell final : public QuickView,
                        public platform::UITableViewCell,
                        public platform::UIItemCell {
 public:
  using QuickView::QuickView;
  platform::ItemPlace place() const override;
  // As the delegate shows it, or the one that is its list's current item.
  std::optional<bool> isSelected() const override;
  std::optional<bool> isExpanded() const override;
  platform::Task<void> setExpanded(bool expanded) override;
  // Delegates say of nothing that a person can edit it.
  platform::Task<void> setCellValue(std::string value) override;
  // The delegate's own text, or else the first text in it.
  std::optional<std::string> cellText() const override;
};

}  // namespace tarni::qt
