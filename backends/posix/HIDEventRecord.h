// HIDEventRecord: one human-interface event as it was asked for, with its values and children.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <variant>
#include <vector>

#include "platform/IOKit/IOHIDEvent.h"

namespace tarni::posix {

struct HIDEventRecord : platform::IOHIDEvent {
  using Arguments =
      std::variant<platform::DigitizerEventArguments, platform::DigitizerFingerArguments>;

  explicit HIDEventRecord(const Arguments& asked) : arguments(asked) {}

  Arguments arguments;
  std::map<std::uint32_t, long> integerValues;
  // In the order in which they were appended.
  std::vector<std::shared_ptr<HIDEventRecord>> children;
};

// The record behind an event, or null when another system made it.
inline std::shared_ptr<HIDEventRecord> recordOf(const platform::IOHIDEventRef& event) {
  return std::dynamic_pointer_cast<HIDEventRecord>(event);
}

}  // namespace tarni::posix
