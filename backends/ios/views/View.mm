#include "backends/ios/views/View.h"

#include "backends/ios/guard/Collection.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/guard/Report.h"
#include "backends/ios/runtime/RuntimeClass.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/AccessibilityElement.h"
#include "backends/ios/views/Image.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

constexpr int kDeepestDrawing = 64;

bool isView(id object) { return isKindOf(object, [::UIView class]); }

// Known without asking: a window's own code may raise as any other's.
bool isWindow(::UIView* view) { return isKindOf(view, [::UIWindow class]); }

}  // namespace

std::shared_ptr<View> viewOf(id object) { return isView(object) ? holderOfKeys(object) : nullptr; }

std::shared_ptr<View> holderOfKeys(id object) {
  if (!object) return nullptr;
  if (auto known = std::dynamic_pointer_cast<View>(attachmentOf(object))) return known;
  std::shared_ptr<View> made = isView(object) ? makeKind(object) : std::make_shared<View>(object);
  attach(object, made);
  return made;
}

View::View(id object)
    : object_(object), view_(isView(object) ? object : nil), class_(classOf(object)) {}

void View::objectIsGoing() noexcept {
  object_ = view_ = nil;
  contents_.clear();
  drawn_ = {};
  if (const auto parent = std::static_pointer_cast<View>(listedBy_.lock())) {
    parent->subviews_.clear();
  }
}

platform::Class View::getClass() const { return class_; }

// --- the tree

platform::UIViewRef View::superview() const {
  if (isWindow(view_)) return nullptr;
  return viewOf(ask("superview", [&] { return [view_ superview]; }));
}

std::span<const platform::UIViewRef> View::subviews() const {
  NSArray* const shown =
      answeredAll(view_, "subviews", [::UIView class], [&] { return [view_ subviews]; });
  if (!lists(shown)) list(shown);
  return subviews_;
}

bool View::lists(NSArray* views) const {
  if ([views count] != subviews_.size()) return false;
  auto listed = subviews_.begin();
  for (::UIView* view in views) {
    if (static_cast<const View&>(**listed++).native() != view) return false;
  }
  return true;
}

void View::list(NSArray* views) const {
  subviews_.clear();
  for (::UIView* view in views) {
    const std::shared_ptr<View> listed = viewOf(view);
    listed->listedBy_ = std::const_pointer_cast<platform::UIView>(shared_from_this());
    subviews_.push_back(listed);
  }
}

std::span<const platform::UIViewRef> View::contents() const {
  const std::span<const platform::UIViewRef> shown = subviews();
  NSArray* const drawn = elementsToldBy(object_);
  drawn_ = Owned(drawn);
  std::vector<platform::UIViewRef> all;
  for (id element in drawn) {
    if (isView(element) || isWithin(element)) continue;
    if (all.empty()) all.assign(shown.begin(), shown.end());
    const std::shared_ptr<AccessibilityElement> listed = elementOf(element);
    listed->setContainer(std::static_pointer_cast<const View>(shared_from_this()));
    all.push_back(listed);
  }
  if (all != contents_) contents_ = std::move(all);
  return contents_.empty() ? shown : contents_;
}

bool View::isWithin(id object) const {
  const View* at = this;
  platform::UIViewRef outer;
  for (int depth = 0; depth < kDeepestDrawing; ++depth) {
    if (at->object_ == object) return true;
    if (!at->isDrawnBySuperview()) return false;
    outer = at->superview();
    at = static_cast<const View*>(outer.get());
  }
  return true;
}

platform::UIWindowRef View::window() const {
  if (isWindow(view_)) return std::const_pointer_cast<platform::UIView>(shared_from_this());
  return viewOf(ask("window", [&] { return [view_ window]; }));
}

platform::CALayer& View::layer() const {
  if (!layer_) layer_ = Layer::of(ask("layer", [&] { return [view_ layer]; }));
  return layer_ ? *layer_ : Layer::none();
}

// --- geometry

platform::CGRect View::bounds() const {
  return toRect(ask("bounds", [&] { return [view_ bounds]; }));
}

platform::CGRect View::frame() const {
  return toRect(ask("frame", [&] { return [view_ frame]; }));
}

platform::CGPoint View::center() const {
  for (::UIView* at = view_; at; at = ask("superview", [&] { return [at superview]; })) {
    if (ask("isHidden", [&]() -> bool { return [at isHidden]; })) return platform::kNowhere;
  }
  return toPoint(ask("center", [&] { return [view_ center]; }));
}

platform::CGAffineTransform View::transform() const {
  if (!view_) return {};
  const ::CGAffineTransform t = ask(
      "transform", [&] { return [view_ transform]; }, ::CGAffineTransform{1, 0, 0, 1, 0, 0});
  return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}

::UIView* View::topmost() const {
  if (isWindow(view_)) return view_;
  if (::UIView* const window = ask("window", [&]() -> ::UIView* { return [view_ window]; })) {
    return window;
  }
  ::UIView* top = view_;
  while (::UIView* const above = ask("superview", [&] { return [top superview]; })) top = above;
  return top;
}

platform::CGPoint View::convertPointToWindow(platform::CGPoint point) const {
  ::UIView* const top = topmost();
  return toPoint(ask("convertPoint:toView:",
                     [&] { return [view_ convertPoint:fromPoint(point) toView:top]; }));
}

platform::CGPoint View::convertPointFromWindow(platform::CGPoint point) const {
  ::UIView* const top = topmost();
  return toPoint(ask("convertPoint:fromView:",
                     [&] { return [view_ convertPoint:fromPoint(point) fromView:top]; }));
}

platform::UIViewRef View::hitTest(platform::CGPoint point) const {
  return viewOf(
      ask("hitTest:withEvent:", [&] { return [view_ hitTest:fromPoint(point) withEvent:nil]; }));
}

// --- state

bool View::isHidden() const {
  return !view_ || ask("isHidden", [&]() -> bool { return [view_ isHidden]; });
}

bool View::isOpaque() const {
  return ask("isOpaque", [&]() -> bool { return [view_ isOpaque]; });
}

bool View::clipsToBounds() const {
  return ask("clipsToBounds", [&]() -> bool { return [view_ clipsToBounds]; });
}

bool View::isUserInteractionEnabled() const {
  return ask("isUserInteractionEnabled",
             [&]() -> bool { return [view_ isUserInteractionEnabled]; });
}

bool View::isFirstResponder() const {
  return ask("isFirstResponder", [&]() -> bool { return [view_ isFirstResponder]; });
}

bool View::canBecomeFirstResponder() const {
  return ask("canBecomeFirstResponder", [&]() -> bool { return [view_ canBecomeFirstResponder]; });
}

platform::Task<void> View::becomeFirstResponder() {
  return completed([view = Owned(view_)] { guarded([&] { [view.get() becomeFirstResponder]; }); });
}

std::span<const platform::Class> View::gestureRecognizers() const {
  gestureRecognizers_.clear();
  NSArray* const all = answeredAll(view_, "gestureRecognizers", [::UIGestureRecognizer class],
                                   [&] { return [view_ gestureRecognizers]; });
  for (UIGestureRecognizer* recognizer in all) {
    gestureRecognizers_.push_back(classOf(recognizer));
  }
  return gestureRecognizers_;
}

// --- description

long View::tag() const {
  return ask("tag", [&] { return static_cast<long>([view_ tag]); });
}

std::optional<std::string> View::accessibilityIdentifier() const {
  return toText(ask("accessibilityIdentifier", [&] { return [object_ accessibilityIdentifier]; }));
}

std::optional<std::string> View::accessibilityLanguage() const {
  return toText(ask("accessibilityLanguage", [&] { return [object_ accessibilityLanguage]; }));
}

std::optional<std::string> View::accessibilityValue() const {
  return toText(ask("accessibilityValue", [&] { return [object_ accessibilityValue]; }));
}

std::optional<std::string> View::accessibilityLabel() const {
  return toText(ask("accessibilityLabel", [&] { return [object_ accessibilityLabel]; }));
}

std::optional<std::string> View::accessibilityHint() const {
  return toText(ask("accessibilityHint", [&] { return [object_ accessibilityHint]; }));
}

// --- key-value coding

platform::UIViewRef View::valueForKey(std::string_view key) const {
  return holderOfKeys(ask("valueForKey:", [&] { return [object_ valueForKey:toNSString(key)]; }));
}

// An instance variable that holds no object has an encoding without "@".
platform::UIViewRef View::instanceVariable(std::string_view name) const {
  const Ivar variable =
      class_getInstanceVariable(object_getClass(object_), std::string(name).c_str());
  if (!variable || ivar_getTypeEncoding(variable)[0] != '@') {
    if (object_) reportMissing(class_->name() + "." + std::string(name), "web views take no taps");
    return nullptr;
  }
  return holderOfKeys(object_getIvar(object_, variable));
}

// --- keys of a keyboard

bool View::respondsTo(SEL selector) const {
  return ask("respondsToSelector:", [&]() -> bool { return [view_ respondsToSelector:selector]; });
}

bool View::takesKeys() const {
  return respondsTo(@selector(insertText:)) && respondsTo(@selector(deleteBackward));
}

platform::Task<void> View::insertText(std::string text) {
  return completed([view = Owned(view_), text = std::move(text)] {
    guarded([&] { [(id<UIKeyInput>)view.get() insertText:toNSString(text)]; });
  });
}

platform::Task<void> View::deleteBackward() {
  return completed(
      [view = Owned(view_)] { guarded([&] { [(id<UIKeyInput>)view.get() deleteBackward]; }); });
}

platform::Task<void> View::insertReturn() { return insertText("\n"); }

platform::Task<void> View::selectAll() {
  if (!respondsTo(@selector(selectAll:))) {
    throw platform::NSException(platform::NSGenericException,
                                "A " + class_->name() + " selects nothing");
  }
  return completed([view = Owned(view_)] { guarded([&] { [view.get() selectAll:nil]; }); });
}

// --- pictures

platform::Task<platform::UIImageRef> View::drawViewHierarchy() {
  return completed([view = Owned(view_)] { return Image::drawnFrom(view.get()); });
}

}  // namespace tarni::ios
