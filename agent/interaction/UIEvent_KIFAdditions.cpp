#include "agent/interaction/UIEvent_KIFAdditions.h"

#include "platform/Platform.h"

namespace tarni::KIFAdditions {
namespace {

using platform::UITouchPhase;

constexpr std::uint32_t kTransducerTypeHand = 3;
constexpr std::uint32_t kEventMaskRangeAndTouch = 3;
constexpr std::uint32_t kEventMaskTouch = 2;
constexpr std::uint32_t kEventMaskPosition = 4;
constexpr std::uint32_t kFingerIdentity = 2;  // the same for all fingers

platform::DigitizerEventArguments handArguments(std::uint64_t timeStamp) {
  platform::DigitizerEventArguments hand;
  hand.timeStamp = timeStamp;
  hand.transducerType = kTransducerTypeHand;
  hand.eventMask = kEventMaskTouch;
  hand.touch = true;
  return hand;
}

platform::DigitizerFingerArguments fingerArguments(const platform::UITouch& touch,
                                                   std::uint32_t index, std::uint64_t timeStamp) {
  const platform::CGPoint location = touch.locationInView(touch.window());
  const bool isDown = touch.phase() != UITouchPhase::Ended;
  platform::DigitizerFingerArguments finger;
  finger.timeStamp = timeStamp;
  finger.index = index;
  finger.identity = kFingerIdentity;
  finger.eventMask =
      touch.phase() == UITouchPhase::Moved ? kEventMaskPosition : kEventMaskRangeAndTouch;
  finger.x = location.x;
  finger.y = location.y;
  finger.minorRadius = finger.majorRadius = 5.0;
  finger.quality = finger.density = finger.irregularity = 1.0;
  finger.range = finger.touch = isDown;
  return finger;
}

}  // namespace

platform::IOHIDEventRef kif_IOHIDEventWithTouches(Touches touches) {
  platform::IOHIDEventSystem& system = *platform::current().hidEvents;
  const std::uint64_t timeStamp = platform::current().processInfo->machAbsoluteTime();
  platform::IOHIDEventRef hand = system.createDigitizerEvent(handArguments(timeStamp));
  system.setIntegerValue(hand, platform::kIOHIDEventFieldDigitizerIsDisplayIntegrated, 1);
  std::uint32_t index = 0;
  for (const platform::UITouchRef& touch : touches) {
    const platform::IOHIDEventRef finger =
        system.createDigitizerFingerEventWithQuality(fingerArguments(*touch, ++index, timeStamp));
    system.setIntegerValue(finger, platform::kIOHIDEventFieldDigitizerIsDisplayIntegrated, 1);
    system.appendEvent(hand, finger);
  }
  return hand;
}

void kif_setEventWithTouches(platform::UIEvent& event, Touches touches) {
  const platform::NSProcessInfo& process = *platform::current().processInfo;
  if (process.respondsToIsOperatingSystemAtLeastVersion() &&
      process.isOperatingSystemAtLeastVersion({8, 0, 0})) {
    kif_setIOHIDEventWithTouches(event, touches);
  } else {
    kif_setGSEventWithTouches(event, touches);
  }
}

void kif_setIOHIDEventWithTouches(platform::UIEvent& event, Touches touches) {
  event._setHIDEvent(kif_IOHIDEventWithTouches(touches));
}

void kif_setGSEventWithTouches(platform::UIEvent& event, Touches touches) {
  const platform::UITouchRef first = touches.empty() ? nullptr : touches.front();
  const platform::CGPoint location =
      first ? first->locationInView(first->window()) : platform::CGPoint{};
  const bool isUp = first && first->phase() == UITouchPhase::Ended;
  platform::GSEventRecord record;
  record.flags = isUp ? 0x01010180 : 0x03010180;
  record.type = 3001;
  record.x1 = record.x2 = record.x3 = static_cast<float>(location.x);
  record.y1 = record.y2 = record.y3 = static_cast<float>(location.y);
  record.sizeX = record.sizeY = 1.0F;
  event._setGSEvent(record);
  event._setTimestamp(first ? first->timestamp() : 0);
}

}  // namespace tarni::KIFAdditions
