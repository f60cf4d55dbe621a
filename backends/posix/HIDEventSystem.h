// HIDEventSystem: makes human-interface events as plain records (HIDEventRecord). Main thread.
#pragma once

#include "platform/IOKit/IOHIDEvent.h"

namespace tarni::posix {

class HIDEventSystem : public platform::IOHIDEventSystem {
 public:
  platform::IOHIDEventRef createDigitizerEvent(
      const platform::DigitizerEventArguments& arguments) override;
  platform::IOHIDEventRef createDigitizerFingerEventWithQuality(
      const platform::DigitizerFingerArguments& arguments) override;
  void setIntegerValue(const platform::IOHIDEventRef& event, std::uint32_t field,
                       long value) override;
  // Takes no effect when a record is null or of another system.
  void appendEvent(const platform::IOHIDEventRef& parent,
                   const platform::IOHIDEventRef& child) override;
};

}  // namespace tarni::posix
