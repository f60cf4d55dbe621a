// View: a UIView in memory, with UIKit's geometry and hit testing. The kinds of views derive from
// it (views/). Main thread.
//
// Views are made with std::make_shared or, with all that belongs to them in one expression, with
// build<Kind>() (Build.h). A view is owned by its superview and by whoever else holds it. One that
// was removed keeps its subviews and has neither superview nor window.
//
// Geometry is UIKit's: bounds (own coordinates), centre (superview's coordinates) and transform
// (about the centre) are stored, the frame is derived from them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "backends/headless/Layer.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIEvent.h"
#include "platform/UIKit/UIView.h"

namespace tarni::headless {

class Canvas;
class GestureRecognizer;
class View;
class Window;
using ViewRef = std::shared_ptr<View>;

class View : public platform::UIView {
 public:
  // `cls` is any class; the kinds take one of their own.
  explicit View(platform::Class cls = platform::uikit::UIView);
  ~View() override;
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  // --- class
  platform::Class getClass() const override { return class_; }
  void setClass(platform::Class cls) { setContent(class_, cls); }
  // A class of that name below the present one, made when it is missing.
  void setClassName(std::string_view name) { setClass(platform::defineClass(name, class_)); }

  // --- tree
  platform::UIViewRef superview() const override;
  std::span<const platform::UIViewRef> subviews() const override { return subviews_; }
  platform::UIWindowRef window() const override;
  Layer& layer() const override { return layer_; }
  ViewRef ref() { return std::static_pointer_cast<View>(shared_from_this()); }
  View* parent() const { return superview_; }
  View& child(std::size_t index) const { return static_cast<View&>(*subviews_[index]); }

  // In front of the others. A view that stands elsewhere is moved; nothing happens when `view` is
  // null, this view or one of its ancestors.
  void addSubview(const ViewRef& view);
  // 0 is the back; an index beyond the end is the front.
  void insertSubview(const ViewRef& view, std::size_t index);
  void removeFromSuperview();
  void removeAllSubviews();

  // --- geometry
  platform::CGRect bounds() const override { return bounds_; }
  platform::CGRect frame() const override;
  platform::CGPoint center() const override;
  platform::CGAffineTransform transform() const override { return transform_; }
  void setBounds(const platform::CGRect& bounds);
  // Sets the centre and the size of the bounds such that `frame` gives the rectangle.
  void setFrame(const platform::CGRect& frame);
  void setCenter(platform::CGPoint center) { setStructure(center_, center); }
  void setTransform(const platform::CGAffineTransform& transform);
  // From the view's coordinates into those of its superview.
  platform::CGAffineTransform transformToSuperview() const;
  platform::CGPoint convertPointToSuperview(platform::CGPoint point) const;
  platform::CGPoint convertPointFromSuperview(platform::CGPoint point) const;
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const override;
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const override;
  platform::UIViewRef hitTest(platform::CGPoint point) const override;
  // Whether the view takes touches at the point (own coordinates): inside its bounds.
  virtual bool pointInside(platform::CGPoint point) const { return bounds_.contains(point); }

  // --- state
  bool isHidden() const override { return hidden_; }
  bool isOpaque() const override { return opaque_; }
  bool clipsToBounds() const override { return clipsToBounds_; }
  bool isUserInteractionEnabled() const override { return userInteractionEnabled_; }
  double alpha() const { return alpha_; }
  std::optional<platform::CGColor> backgroundColor() const { return backgroundColor_; }
  void setHidden(bool hidden) { setStructure(hidden_, hidden); }
  void setOpaque(bool opaque) { opaque_ = opaque; }
  void setClipsToBounds(bool clips) { setStructure(clipsToBounds_, clips); }
  void setUserInteractionEnabled(bool enabled) { setContent(userInteractionEnabled_, enabled); }
  void setAlpha(double alpha) { alpha_ = alpha; }
  void setBackgroundColor(std::optional<platform::CGColor> color) { backgroundColor_ = color; }

  // --- responder
  bool isFirstResponder() const override;
  bool canBecomeFirstResponder() const override { return canBecomeFirstResponder_; }
  void setCanBecomeFirstResponder(bool can) { canBecomeFirstResponder_ = can; }
  platform::Task<void> becomeFirstResponder() override;
  // False when the view cannot, or stands in no window.
  bool focus();
  void resignFirstResponder();

  // --- gestures
  std::span<const platform::Class> gestureRecognizers() const override;
  std::span<const std::shared_ptr<GestureRecognizer>> recognizers() const;
  void addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
  void removeGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);

  // --- description
  long tag() const override { return tag_; }
  std::optional<std::string> accessibilityIdentifier() const override;
  std::optional<std::string> accessibilityLanguage() const override;
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override;
  void setTag(long tag) { tag_ = tag; }
  void setAccessibilityIdentifier(std::optional<std::string> text);
  void setAccessibilityLanguage(std::optional<std::string> text);
  void setAccessibilityValue(std::optional<std::string> text);
  void setAccessibilityLabel(std::optional<std::string> text);
  void setAccessibilityHint(std::optional<std::string> text);

  // A key answers with what was set for it, otherwise with the instance variable of that name, with
  // or without a leading underscore. Both are held strongly; null takes the entry away.
  platform::UIViewRef valueForKey(std::string_view key) const override;
  platform::UIViewRef instanceVariable(std::string_view name) const override;
  void setValueForKey(const ViewRef& view, std::string_view key);
  void setInstanceVariable(const ViewRef& view, std::string_view name);

  // --- drawing
  platform::Task<platform::UIImageRef> drawViewHierarchy() override;
  // What the view shows itself, above its background and below its subviews, in own coordinates.
  virtual void drawContent(Canvas& canvas) const;

  // --- called by the event dispatch
  // One touch began, moved, rested, ended or was cancelled (which the touch itself does not say).
  // False hands it on to the superview.
  virtual bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch);
  // True for views whose own answer to a tap goes before tap recognizers of the views above.
  virtual bool prefersItselfToRecognizers() const { return false; }

 protected:
  // Every setter of what the agent can ask says so, in one of these ways (ChangeLog.h).
  void contentChanged();
  void structureChanged() const;
  template <typename Member>
  void setContent(Member& member, std::type_identity_t<Member> value) {
    member = std::move(value);
    contentChanged();
  }
  template <typename Member>
  void setStructure(Member& member, std::type_identity_t<Member> value) {
    member = std::move(value);
    structureChanged();
  }
  // The bounds have changed: place the subviews.
  virtual void layoutSubviews() {}
  // Called once focus has come or gone.
  virtual void didBecomeFirstResponder() {}
  virtual void didResignFirstResponder() {}

 private:
  friend class Window;
  struct Extras;

  Extras& extras();
  void setWindowOfTree(Window* window);
  bool isBelow(const View& other) const;
  void resignFirstResponderBelow();
  void detach();

  // What a walk looks at comes first and close together.
  platform::Class class_;
  bool hidden_ = false;
  bool opaque_ = false;
  bool clipsToBounds_ = false;
  bool userInteractionEnabled_ = true;
  bool canBecomeFirstResponder_ = false;
  std::vector<platform::UIViewRef> subviews_;
  mutable Layer layer_;
  View* superview_ = nullptr;
  Window* window_ = nullptr;
  long tag_ = 0;
  double alpha_ = 1;
  platform::CGRect bounds_;
  platform::CGPoint center_;
  platform::CGAffineTransform transform_;
  std::optional<platform::CGColor> backgroundColor_;
  std::unique_ptr<Extras> extras_;  // what most views do not have
};

}  // namespace tarni::headless
