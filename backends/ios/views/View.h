// View: a UIView of the application's, the same one for as long as that lives; the kinds of views
// derive from it (controls/). Main thread.
//
// It does not keep the application's view alive. Once that has gone every message goes to nil,
// which answers as the seam asks of a view that has gone.
#pragma once

#include <memory>
#include <vector>

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Attachment.h"
#include "backends/ios/views/Layer.h"
#include "platform/UIKit/UIKeyInput.h"
#include "platform/UIKit/UIView.h"

namespace tarni::ios {

class View : public platform::UIView, public platform::UIKeyInput, public Attachment {
 public:
  explicit View(id object);
  void objectIsGoing() noexcept override;

  // Nil when it has gone.
  ::UIView* native() const { return view_; }

  platform::Class getClass() const override;
  platform::UIViewRef superview() const override;
  std::span<const platform::UIViewRef> subviews() const override;
  std::span<const platform::UIViewRef> contents() const override;
  platform::UIWindowRef window() const override;
  platform::CALayer& layer() const override;
  platform::CGRect bounds() const override;
  platform::CGRect frame() const override;
  platform::CGPoint center() const override;
  platform::CGAffineTransform transform() const override;
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const override;
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const override;
  platform::UIViewRef hitTest(platform::CGPoint point) const override;
  bool isHidden() const override;
  bool isOpaque() const override;
  bool clipsToBounds() const override;
  bool isUserInteractionEnabled() const override;
  bool isFirstResponder() const override;
  bool canBecomeFirstResponder() const override;
  platform::Task<void> becomeFirstResponder() override;
  std::span<const platform::Class> gestureRecognizers() const override;
  long tag() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
  std::optional<std::string> accessibilityLanguage() const override;
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override;
  platform::UIViewRef valueForKey(std::string_view key) const override;
  platform::UIViewRef instanceVariable(std::string_view name) const override;
  platform::Task<platform::UIImageRef> drawViewHierarchy() override;
  bool takesKeys() const override;
  platform::Task<void> insertText(std::string text) override;
  platform::Task<void> deleteBackward() override;
  platform::Task<void> insertReturn() override;
  platform::Task<void> selectAll() override;

 protected:
  // The view as an instance of its kind.
  template <typename Kind>
  Kind* as() const {
    return static_cast<Kind*>(view_);
  }

  // The same, and what else one is made of.
  id object() const { return object_; }

  // Puts a question to it: see `answered`.
  template <typename Call, typename Result = std::invoke_result_t<Call>>
  Result ask(const char* question, Call call,
             std::type_identity_t<Result> otherwise = Result{}) const {
    return answered(object_, question, call, otherwise);
  }

 private:
  bool respondsTo(SEL selector) const;
  bool lists(NSArray* views) const;
  void list(NSArray* views) const;
  // Whether it is the object, stands in it, or stands so deep that it may be without end.
  bool isWithin(id object) const;
  // Whose coordinates count as the window's.
  ::UIView* topmost() const;

  id object_;
  ::UIView* view_;  // null as well for an object that is not one
  platform::Class class_;
  mutable std::shared_ptr<Layer> layer_;
  mutable std::vector<platform::UIViewRef> subviews_;
  mutable std::vector<platform::UIViewRef> contents_;  // empty where the subviews are all
  mutable Owned<NSArray*> drawn_;  // what it told accessibility: some make it anew each time
  mutable std::vector<platform::Class> gestureRecognizers_;
  mutable std::weak_ptr<platform::UIView> listedBy_;  // whose subviews_ hold this view
};

// The view of an object, made when it is first asked for; null for nil and for what is not a
// UIView.
std::shared_ptr<View> viewOf(id object);
// The same for what a key holds: an object that is not a UIView but stands between one and another
// (the inside of a web view) becomes a view of nothing but its keys.
std::shared_ptr<View> holderOfKeys(id object);

}  // namespace tarni::ios
