// UIView: what every view has. The kinds of views add a few operations each (UIControls.h).
//
// Views belong to the backend: for one object of the toolkit it always gives the same UIView, as
// long as that object lives. Whoever keeps a view beyond a call keeps it weakly. The object may go
// while a reference is held (a dialog closes itself while a gesture waits); the view then answers
// as an empty, hidden view without window, superview and subviews. Main thread only.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/ObjectiveC/Class.h"
#include "platform/QuartzCore/CALayer.h"
#include "platform/QuartzCore/CGGeometry.h"
#include "platform/Task.h"
#include "platform/UIKit/UIImage.h"

namespace tarni::platform {

class UIView;
using UIViewRef = std::shared_ptr<UIView>;
using UIViewWeakRef = std::weak_ptr<UIView>;
// A view of the kind UIWindow. Its superview is null; its frame is in screen coordinates.
using UIWindowRef = UIViewRef;

class UIView : public std::enable_shared_from_this<UIView> {
 public:
  virtual ~UIView() = default;

  // The runtime class. Never null.
  virtual Class getClass() const = 0;
  bool isKindOfClass(Class kind) const { return getClass()->isSubclassOf(kind); }

  // --- the tree

  // Null for a window and for a view that stands in no tree.
  virtual UIViewRef superview() const = 0;
  // Back to front. Valid until the program runs again; asking twice without that in between gives
  // the same memory.
  virtual std::span<const UIViewRef> subviews() const = 0;
  // The subviews, and behind them what the view draws itself and describes to accessibility alone:
  // views of their own to whoever looks at them, but not to a finger. Valid as `subviews` is.
  virtual std::span<const UIViewRef> contents() const { return subviews(); }
  // Whether it is such a thing: what is meant for it goes to its superview.
  virtual bool isDrawnBySuperview() const { return false; }
  // The window that the view stands in (a window: itself); null when it is in none.
  virtual UIWindowRef window() const = 0;
  // Lives as long as the view.
  virtual CALayer& layer() const = 0;

  // --- geometry, in points

  // The view's own coordinates; a scroll view's origin is its content offset.
  virtual CGRect bounds() const = 0;
  // The upright rectangle in the superview's coordinates.
  virtual CGRect frame() const = 0;
  // Where a finger finds the view: the middle of the frame, and `kNowhere` for one that no finger
  // finds: it is hidden or stands below a hidden one, is clipped away by those above it, or lets
  // fingers through to what lies below.
  virtual CGPoint center() const = 0;
  virtual CGAffineTransform transform() const = 0;
  // Between the view's coordinates and those of its window (of the topmost view, when it is in
  // none).
  virtual CGPoint convertPointToWindow(CGPoint point) const = 0;
  virtual CGPoint convertPointFromWindow(CGPoint point) const = 0;
  // The deepest view at `point` (own coordinates) that takes touches, or null.
  virtual UIViewRef hitTest(CGPoint point) const = 0;

  // --- state

  virtual bool isHidden() const = 0;
  virtual bool isOpaque() const = 0;
  virtual bool clipsToBounds() const = 0;
  virtual bool isUserInteractionEnabled() const = 0;
  virtual bool isFirstResponder() const = 0;
  virtual bool canBecomeFirstResponder() const = 0;
  virtual Task<void> becomeFirstResponder() = 0;
  // The classes of the gesture recognizers, in order. Valid as `subviews` is.
  virtual std::span<const Class> gestureRecognizers() const = 0;

  // Null where the question does not arise: a row, a tab; a check box, a button that stays down, an
  // entry of a menu; a node of a tree.
  virtual std::optional<bool> isSelected() const { return std::nullopt; }
  virtual std::optional<bool> isChecked() const { return std::nullopt; }
  virtual std::optional<bool> isExpanded() const { return std::nullopt; }

  // --- description; null is nil

  virtual long tag() const = 0;
  virtual std::optional<std::string> accessibilityIdentifier() const = 0;
  virtual std::optional<std::string> accessibilityLanguage() const = 0;
  virtual std::optional<std::string> accessibilityValue() const = 0;
  virtual std::optional<std::string> accessibilityLabel() const = 0;
  virtual std::optional<std::string> accessibilityHint() const = 0;

  // Key-value access and direct access to an instance variable, for keys that hold a view. Null
  // when the view has no such key.
  virtual UIViewRef valueForKey(std::string_view key) const = 0;
  virtual UIViewRef instanceVariable(std::string_view name) const = 0;

  // Draws the view and everything in it into an image of the bounds' size, at the screen's scale,
  // without waiting for screen updates. Null or an empty image when it cannot be drawn.
  virtual Task<UIImageRef> drawViewHierarchy() = 0;
};

// The view as one of the kinds of UIControls.h, or null when it is not one.
template <typename Kind>
std::shared_ptr<Kind> as(const UIViewRef& view) {
  return std::dynamic_pointer_cast<Kind>(view);
}

// True for the view itself and for every view below `ancestor`. False when either is null.
bool isDescendantOfView(const UIViewRef& view, const UIViewRef& ancestor);

// From the coordinates of `from` into those of `to`; null is the window's coordinates. Views of
// different windows are converted over the screen.
CGPoint convertPoint(CGPoint point, const UIViewRef& from, const UIViewRef& to);
// The smallest upright rectangle round the converted corners.
CGRect convertRect(const CGRect& rect, const UIViewRef& from, const UIViewRef& to);

}  // namespace tarni::platform
