// QtSoleWindow: the window of a top-level widget that is a control itself, such as a program that
// is nothing but a button. The toolkit has one object for both; people see a window with a button
// in it. GUI thread.
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <array>

#include "backends/qt/views/QtNativeWindow.h"
#include "backends/qt/views/QtViewBase.h"

namespace tarni::qt {

class QtSoleWindow final : public QtViewBase, public QtNativeWindow {
 public:
  explicit QtSoleWindow(QWidget& widget) : widget_(&widget) {}

  QWidget* widget() const override { return widget_; }
  QRect shape() const override { return widget_ ? widget_->rect() : QRect(); }
  platform::Class getClass() const override;
  platform::UIViewRef superview() const override { return nullptr; }
  std::span<const platform::UIViewRef> subviews() const override;
  platform::CGRect frame() const override;
  platform::UIViewRef hitTest(platform::CGPoint point) const override;

  bool isHidden() const override { return !widget_ || !widget_->isVisible(); }
  bool isOpaque() const override;
  bool isUserInteractionEnabled() const override { return widget_ && widget_->isEnabled(); }
  bool isFirstResponder() const override { return false; }
  bool canBecomeFirstResponder() const override { return false; }
  platform::Task<void> becomeFirstResponder() override;

  std::optional<std::string> accessibilityIdentifier() const override { return std::nullopt; }
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }

 protected:
  QWindow* ownWindow() const override { return nativeWindow(); }

 private:
  const QPointer<QWidget> widget_;
  mutable std::array<platform::UIViewRef, 1> content_;
};

}  // namespace tarni::qt
