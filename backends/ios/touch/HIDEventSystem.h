// HIDEventSystem: makes human-interface records with IOKit's functions, which no SDK declares: they
// are looked up when the object is made. One that is missing gets a log line, and what needs it is
// left out. Main thread.
#pragma once

#include <functional>

#include "platform/IOKit/IOHIDEvent.h"

namespace tarni::ios {

class HIDEventSystem : public platform::IOHIDEventSystem {
 public:
  // The address of a function of that name, null when there is none.
  using LookUp = std::function<void*(const char* name)>;

  // Looks in IOKit.
  HIDEventSystem();
  explicit HIDEventSystem(const LookUp& lookUp);

  // Null when the function is missing or makes none.
  platform::IOHIDEventRef createDigitizerEvent(
      const platform::DigitizerEventArguments& arguments) override;
  platform::IOHIDEventRef createDigitizerFingerEventWithQuality(
      const platform::DigitizerFingerArguments& arguments) override;
  void setIntegerValue(const platform::IOHIDEventRef& event, std::uint32_t field,
                       long value) override;
  void appendEvent(const platform::IOHIDEventRef& parent,
                   const platform::IOHIDEventRef& child) override;

 private:
  void* createHand_;
  void* createFinger_;
  void* setIntegerValue_;
  void* appendEvent_;
};

}  // namespace tarni::ios
