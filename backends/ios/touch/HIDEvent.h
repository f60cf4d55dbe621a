// HIDEvent: one record of IOKit's, given back with its last reference. Main thread.
#pragma once

#include "backends/ios/Apple.h"
#include "platform/IOKit/IOHIDEvent.h"

namespace tarni::ios {

class HIDEvent : public platform::IOHIDEvent {
 public:
  // Takes over the reference of what a Create function gave.
  explicit HIDEvent(::IOHIDEventRef event) : event_(event) {}
  HIDEvent(const HIDEvent&) = delete;
  HIDEvent& operator=(const HIDEvent&) = delete;
  ~HIDEvent() override { CFRelease(event_); }

  ::IOHIDEventRef native() const { return event_; }

 private:
  ::IOHIDEventRef event_;
};

// Null for null, which stands for a record that could not be made.
inline ::IOHIDEventRef nativeOf(const platform::IOHIDEventRef& event) {
  const auto own = std::dynamic_pointer_cast<HIDEvent>(event);
  return own ? own->native() : nullptr;
}

}  // namespace tarni::ios
