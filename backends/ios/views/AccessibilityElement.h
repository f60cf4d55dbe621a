// AccessibilityElement: what a view draws itself and tells to accessibility alone, as a view in
// that one: it is where it says that it is, and a finger meets the view that draws it. Main thread.
#pragma once

#include <memory>

#include "backends/ios/views/View.h"

namespace tarni::ios {

class AccessibilityElement : public View {
 public:
  using View::View;

  // What it stands in: a view, or another element.
  void setContainer(const std::shared_ptr<const View>& container) {
    container_ = std::const_pointer_cast<View>(container);
  }

  platform::UIViewRef superview() const override { return object() ? container_.lock() : nullptr; }
  platform::UIWindowRef window() const override;
  platform::CGRect bounds() const override;
  platform::CGRect frame() const override;
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const override;
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const override;
  bool isHidden() const override { return !superview(); }
  bool isUserInteractionEnabled() const override;
  std::optional<bool> isSelected() const override;
  bool isDrawnBySuperview() const override { return true; }

 private:
  platform::CGRect frameInWindow() const;
  bool hasTrait(UIAccessibilityTraits trait) const;

  std::weak_ptr<View> container_;
};

// What the object tells accessibility to stand in it, but for what is a view anyhow. Empty for nil,
// and for lists, whose elements are rows: those in sight are views.
NSArray* elementsToldBy(id object) noexcept;

// The view of an element, made when it is first asked for.
std::shared_ptr<AccessibilityElement> elementOf(id object);

}  // namespace tarni::ios
