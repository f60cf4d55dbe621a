// The human-interface event calls from which a digitizer record is made. Main thread.
#pragma once

#include <cstdint>
#include <memory>

namespace tarni::platform {

// A record of the platform's event system; released with its last reference.
class IOHIDEvent {
 public:
  virtual ~IOHIDEvent() = default;
};
using IOHIDEventRef = std::shared_ptr<IOHIDEvent>;

inline constexpr std::uint32_t kIOHIDEventFieldDigitizerIsDisplayIntegrated = 0xB0019;

// The arguments of IOHIDEventCreateDigitizerEvent behind the allocator (the default one), in order.
struct DigitizerEventArguments {
  std::uint64_t timeStamp = 0;
  std::uint32_t transducerType = 0;
  std::uint32_t index = 0;
  std::uint32_t identity = 0;
  std::uint32_t eventMask = 0;
  std::uint32_t buttonMask = 0;
  double x = 0, y = 0, z = 0;
  double tipPressure = 0, barrelPressure = 0;
  bool range = false;
  bool touch = false;
  std::uint32_t options = 0;
  bool operator==(const DigitizerEventArguments&) const = default;
};

// The same for IOHIDEventCreateDigitizerFingerEventWithQuality.
struct DigitizerFingerArguments {
  std::uint64_t timeStamp = 0;
  std::uint32_t index = 0;
  std::uint32_t identity = 0;
  std::uint32_t eventMask = 0;
  double x = 0, y = 0, z = 0;
  double tipPressure = 0, twist = 0;
  double minorRadius = 0, majorRadius = 0;
  double quality = 0, density = 0, irregularity = 0;
  bool range = false;
  bool touch = false;
  std::uint32_t options = 0;
  bool operator==(const DigitizerFingerArguments&) const = default;
};

class IOHIDEventSystem {
 public:
  virtual ~IOHIDEventSystem() = default;
  virtual IOHIDEventRef createDigitizerEvent(const DigitizerEventArguments& arguments) = 0;
  virtual IOHIDEventRef createDigitizerFingerEventWithQuality(
      const DigitizerFingerArguments& arguments) = 0;
  virtual void setIntegerValue(const IOHIDEventRef& event, std::uint32_t field, long value) = 0;
  virtual void appendEvent(const IOHIDEventRef& parent, const IOHIDEventRef& child) = 0;
};

}  // namespace tarni::platform
