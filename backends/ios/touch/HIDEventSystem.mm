#include "backends/ios/touch/HIDEventSystem.h"

#include <dlfcn.h>

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Report.h"
#include "backends/ios/touch/HIDEvent.h"

namespace tarni::ios {
namespace {

using CreateHand = decltype(IOHIDEventCreateDigitizerEvent);
using CreateFinger = decltype(IOHIDEventCreateDigitizerFingerEventWithQuality);
using SetIntegerValue = decltype(IOHIDEventSetIntegerValue);
using AppendEvent = decltype(IOHIDEventAppendEvent);

// UIKit has loaded it, so it is found without being loaded anew.
void* lookUpInIOKit(const char* name) { return dlsym(RTLD_DEFAULT, name); }

void* found(const HIDEventSystem::LookUp& lookUp, const char* name, const char* whatNoLongerWorks) {
  void* const function = lookUp(name);
  if (!function) reportMissing(name, whatNoLongerWorks);
  return function;
}

platform::IOHIDEventRef owned(::IOHIDEventRef event) {
  return event ? std::make_shared<HIDEvent>(event) : nullptr;
}

}  // namespace

HIDEventSystem::HIDEventSystem() : HIDEventSystem(lookUpInIOKit) {}

HIDEventSystem::HIDEventSystem(const LookUp& lookUp)
    : createHand_(found(lookUp, "IOHIDEventCreateDigitizerEvent",
                        "touches and events carry no digitizer record")),
      createFinger_(found(lookUp, "IOHIDEventCreateDigitizerFingerEventWithQuality",
                          "digitizer records tell of no finger")),
      setIntegerValue_(found(lookUp, "IOHIDEventSetIntegerValue",
                             "digitizer records do not say that they come from the display")),
      appendEvent_(found(lookUp, "IOHIDEventAppendEvent", "digitizer records tell of no finger")) {}

platform::IOHIDEventRef HIDEventSystem::createDigitizerEvent(
    const platform::DigitizerEventArguments& arguments) {
  if (!createHand_) return nullptr;
  return owned(reinterpret_cast<CreateHand*>(createHand_)(
      kCFAllocatorDefault, arguments.timeStamp, arguments.transducerType, arguments.index,
      arguments.identity, arguments.eventMask, arguments.buttonMask, arguments.x, arguments.y,
      arguments.z, arguments.tipPressure, arguments.barrelPressure, arguments.range,
      arguments.touch, arguments.options));
}

platform::IOHIDEventRef HIDEventSystem::createDigitizerFingerEventWithQuality(
    const platform::DigitizerFingerArguments& arguments) {
  if (!createFinger_) return nullptr;
  return owned(reinterpret_cast<CreateFinger*>(createFinger_)(
      kCFAllocatorDefault, arguments.timeStamp, arguments.index, arguments.identity,
      arguments.eventMask, arguments.x, arguments.y, arguments.z, arguments.tipPressure,
      arguments.twist, arguments.minorRadius, arguments.majorRadius, arguments.quality,
      arguments.density, arguments.irregularity, arguments.range, arguments.touch,
      arguments.options));
}

void HIDEventSystem::setIntegerValue(const platform::IOHIDEventRef& event, std::uint32_t field,
                                     long value) {
  if (!setIntegerValue_ || !nativeOf(event)) return;
  reinterpret_cast<SetIntegerValue*>(setIntegerValue_)(nativeOf(event), field, value);
}

void HIDEventSystem::appendEvent(const platform::IOHIDEventRef& parent,
                                 const platform::IOHIDEventRef& child) {
  if (!appendEvent_ || !nativeOf(parent) || !nativeOf(child)) return;
  reinterpret_cast<AppendEvent*>(appendEvent_)(nativeOf(parent), nativeOf(child), 0);
}

}  // namespace tarni::ios
