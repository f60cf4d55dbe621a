// QtPart: something that a widget draws itself and people take for a thing of its own. It belongs
// to the widget's view, stands in it as a subview, and has no subviews. GUI thread.
#pragma once

#include "backends/qt/views/QtView.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::qt {

class QtPart : public QtViewBase {
 public:
  QtPart(std::weak_ptr<const QtView> owner, platform::Class partClass)
      : owner_(std::move(owner)), class_(partClass) {}

  // Null once the part is no longer there.
  QWidget* widget() const final;

  platform::Class getClass() const final { return class_; }
  platform::UIViewRef superview() const final;
  std::span<const platform::UIViewRef> subviews() const final { return {}; }
  platform::CGRect frame() const final;
  platform::UIViewRef hitTest(platform::CGPoint point) const final;

  bool isHidden() const override { return widget() == nullptr; }
  bool isOpaque() const final { return false; }
  bool isFirstResponder() const final { return false; }
  bool canBecomeFirstResponder() const final { return false; }
  platform::Task<void> becomeFirstResponder() final;
  std::optional<std::string> accessibilityIdentifier() const override { return std::nullopt; }

 protected:
  // The view that it stands in, whether or not the part is still there.
  std::shared_ptr<const QtView> owner() const { return owner_.lock(); }
  // False once the row, the tab or the menu entry has gone.
  virtual bool exists() const = 0;

 private:
  std::weak_ptr<const QtView> owner_;
  platform::Class class_;
};

}  // namespace tarni::qt
