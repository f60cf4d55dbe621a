#include "backends/ios/touch/Touch.h"

#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/PrivateCall.h"
#include "backends/ios/runtime/Attachment.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/touch/HIDEvent.h"
#include "backends/ios/views/View.h"

namespace tarni::ios {
namespace {

unsigned long nextNumber() {
  static unsigned long last = 0;
  return ++last;
}

// The touch holds its object, so the object must not hold the touch.
struct TouchLink : Attachment {
  std::weak_ptr<Touch> touch;
  const unsigned long number = nextNumber();
  void objectIsGoing() noexcept override {}
};

::UIView* nativeView(const platform::UIViewRef& view) {
  const auto own = std::dynamic_pointer_cast<View>(view);
  return own ? own->native() : nil;
}

}  // namespace

std::shared_ptr<Touch> Touch::of(::UITouch* touch) {
  if (!touch) return nullptr;
  auto link = std::dynamic_pointer_cast<TouchLink>(attachmentOf(touch));
  if (!link) {
    link = std::make_shared<TouchLink>();
    attach(touch, link);
  }
  std::shared_ptr<Touch> known = link->touch.lock();
  if (!known) link->touch = known = std::make_shared<Touch>(touch, link->number);
  return known;
}

// --- what it says

platform::UITouchPhase Touch::phase() const {
  return static_cast<platform::UITouchPhase>(
      answered(native(), "phase", [&] { return [native() phase]; }));
}

platform::UIViewRef Touch::view() const {
  return viewOf(answered(native(), "view", [&] { return [native() view]; }));
}

platform::UIWindowRef Touch::window() const {
  return viewOf(answered(native(), "window", [&] { return [native() window]; }));
}

platform::CGPoint Touch::locationInView(const platform::UIViewRef& view) const {
  ::UIView* const target = nativeView(view);
  return toPoint(
      answered(native(), "locationInView:", [&] { return [native() locationInView:target]; }));
}

double Touch::timestamp() const {
  return answered(native(), "timestamp", [&] { return [native() timestamp]; });
}

long Touch::tapCount() const {
  return answered(native(), "tapCount", [&] { return static_cast<long>([native() tapCount]); });
}

// --- the private setters

void Touch::setWindow(const platform::UIWindowRef& window) {
  privately(native(), @selector(setWindow:), "touches belong to no window",
            [&] { [native() setWindow:static_cast<::UIWindow*>(nativeView(window))]; });
}

void Touch::setTapCount(long count) {
  privately(native(), @selector(setTapCount:), "touches count no taps",
            [&] { [native() setTapCount:static_cast<NSUInteger>(count)]; });
}

void Touch::_setLocationInWindow(platform::CGPoint point, bool resetPrevious) {
  privately(native(), @selector(_setLocationInWindow:resetPrevious:), "touches have no location",
            [&] { [native() _setLocationInWindow:fromPoint(point) resetPrevious:resetPrevious]; });
}

void Touch::setView(const platform::UIViewRef& view) {
  privately(native(), @selector(setView:), "touches reach no view",
            [&] { [native() setView:nativeView(view)]; });
}

void Touch::setPhase(platform::UITouchPhase phase) {
  privately(native(), @selector(setPhase:), "touches neither move nor end",
            [&] { [native() setPhase:static_cast<UITouchPhase>(phase)]; });
}

void Touch::_setIsFirstTouchForView(bool first) {
  privately(native(), @selector(_setIsFirstTouchForView:),
            "views that take one touch may ignore touches",
            [&] { [native() _setIsFirstTouchForView:first]; });
}

void Touch::setIsTap(bool tap) {
  privately(native(), @selector(setIsTap:), "touches are not marked as taps",
            [&] { [native() setIsTap:tap]; });
}

void Touch::setTimestamp(double timestamp) {
  privately(native(), @selector(setTimestamp:), "touches have no time",
            [&] { [native() setTimestamp:timestamp]; });
}

bool Touch::respondsToSetGestureView() const {
  return knows(native(), @selector(setGestureView:), "gesture views are not set");
}

void Touch::setGestureView(const platform::UIViewRef& view) {
  privately(native(), @selector(setGestureView:), "gesture views are not set",
            [&] { [native() setGestureView:nativeView(view)]; });
}

void Touch::_setHidEvent(const platform::IOHIDEventRef& event) {
  if (!nativeOf(event)) return;
  privately(native(), @selector(_setHidEvent:), "touches carry no digitizer record",
            [&] { [native() _setHidEvent:nativeOf(event)]; });
}

}  // namespace tarni::ios
