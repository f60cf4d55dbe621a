#include "backends/ios/touch/Event.h"

#include <algorithm>

#include "backends/ios/guard/Collection.h"
#include "backends/ios/guard/PrivateCall.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/touch/HIDEvent.h"
#include "backends/ios/touch/Touch.h"

namespace tarni::ios {

platform::UIEventType Event::type() const {
  return static_cast<platform::UIEventType>(
      answered(native(), "type", [&] { return [native() type]; }));
}

const std::vector<platform::UITouchRef>& Event::allTouches() const {
  std::vector<std::shared_ptr<Touch>> found;
  NSArray* const all =
      answeredAll(native(), "allTouches", [::UITouch class], [&] { return [native() allTouches]; });
  for (::UITouch* touch in all) found.push_back(Touch::of(touch));
  std::ranges::sort(found, {}, [](const auto& touch) { return touch->number(); });
  touches_.assign(found.begin(), found.end());
  return touches_;
}

std::string Event::description() const {
  return toTextOrEmpty(answered(native(), "description", [&] { return [native() description]; }));
}

void Event::_clearTouches() {
  touches_.clear();
  privately(native(), @selector(_clearTouches), "gestures are not made",
            [&] { [native() _clearTouches]; });
}

void Event::_addTouch(const platform::UITouchRef& touch, bool forDelayedDelivery) {
  const auto own = std::dynamic_pointer_cast<Touch>(touch);
  if (!own) return;
  privately(native(), @selector(_addTouch:forDelayedDelivery:), "gestures are not made",
            [&] { [native() _addTouch:own->native() forDelayedDelivery:forDelayedDelivery]; });
}

void Event::_setHIDEvent(const platform::IOHIDEventRef& event) {
  if (!nativeOf(event)) return;
  privately(native(), @selector(_setHIDEvent:), "events carry no digitizer record",
            [&] { [native() _setHIDEvent:nativeOf(event)]; });
}

void Event::_setGSEvent(const platform::GSEventRecord& event) {
  gsEvent_ = event;
  gsEvent_.isa = [NSObject class];
  privately(native(), @selector(_setGSEvent:), "events carry no record of the old kind",
            [&] { [native() _setGSEvent:&gsEvent_]; });
}

void Event::_setTimestamp(double timestamp) {
  privately(native(), @selector(_setTimestamp:), "events have no time",
            [&] { [native() _setTimestamp:timestamp]; });
}

}  // namespace tarni::ios
