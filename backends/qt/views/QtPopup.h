// QtPopup: the popup that holds the user (a menu, the list of a combo box), and what takes touches
// beside it. Qt gives every press to such a popup, wherever it falls: a menu passes it on to the
// menus and the menu bar that it was opened from; any other press closes it. GUI thread.
#pragma once

#include "backends/qt/views/QtViewBase.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::qt {

// The popup that was opened last; null when none is open, and while one is that leaves the
// keyboard, and with it the user, in a field below it, as a list of completions does.
QWidget* openPopup();

// The window that a press at that point of the screen is meant for while such a popup is open; null
// while none is.
QWidget* windowPressedBesidePopup(QPoint onScreen);

// Everything beside the open popup that closes it when it is pressed, as a button of the popup: the
// largest free part of the screen. One for all popups, so that it is known by the time that another
// menu opens under the mouse and is closed at once.
class QtPopupOutside final : public QtViewBase,
                             public platform::UIControl,
                             public platform::UIButton {
 public:
  static const std::shared_ptr<QtPopupOutside>& shared();

  // The popup; null while none is open.
  QWidget* widget() const override { return openPopup(); }
  platform::Class getClass() const override;
  platform::UIViewRef superview() const override;
  std::span<const platform::UIViewRef> subviews() const override { return {}; }
  QRect shape() const override;
  QRect shownShape() const override { return shape(); }
  platform::CGRect frame() const override { return toCGRect(shape()); }
  platform::UIViewRef hitTest(platform::CGPoint point) const override;

  bool isHidden() const override { return widget() == nullptr; }
  bool isOpaque() const override { return false; }
  bool isUserInteractionEnabled() const override { return widget() != nullptr; }
  bool isFirstResponder() const override { return false; }
  bool canBecomeFirstResponder() const override { return false; }
  platform::Task<void> becomeFirstResponder() override;

  std::optional<std::string> currentTitle() const override { return "dismiss popup"; }
  std::optional<std::string> accessibilityIdentifier() const override;
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  std::optional<std::string> accessibilityLabel() const override { return currentTitle(); }
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
};

// The entry of a menu or a menu bar that opened the popup; null for one that was opened otherwise.
platform::UIViewRef openerOf(const QWidget& popup);

// The views of the menus and of the menu bar that the popup was opened from, which go on taking
// touches.
void appendOrigins(const QWidget& popup, std::vector<platform::UIViewRef>& views);

}  // namespace tarni::qt
