#include "backends/posix/HIDEventSystem.h"

#include "backends/posix/HIDEventRecord.h"

namespace tarni::posix {

platform::IOHIDEventRef HIDEventSystem::createDigitizerEvent(
    const platform::DigitizerEventArguments& arguments) {
  return std::make_shared<HIDEventRecord>(arguments);
}

platform::IOHIDEventRef HIDEventSystem::createDigitizerFingerEventWithQuality(
    const platform::DigitizerFingerArguments& arguments) {
  return std::make_shared<HIDEventRecord>(arguments);
}

void HIDEventSystem::setIntegerValue(const platform::IOHIDEventRef& event, std::uint32_t field,
                                     long value) {
  if (const auto record = recordOf(event)) record->integerValues[field] = value;
}

void HIDEventSystem::appendEvent(const platform::IOHIDEventRef& parent,
                                 const platform::IOHIDEventRef& child) {
  const auto record = recordOf(parent);
  const auto added = recordOf(child);
  if (record && added) record->children.push_back(added);
}

}  // namespace tarni::posix
