// EventRecord: an event that remembers whatever is set on it. Main thread.
#pragma once

#include <optional>

#include "platform/UIKit/UIEvent.h"

namespace tarni::posix {

class EventRecord : public platform::UIEvent {
 public:
  explicit EventRecord(platform::UIEventType type = platform::UIEventType::Touches) : type_(type) {}

  platform::UIEventType type() const override { return type_; }
  const std::vector<platform::UITouchRef>& allTouches() const override { return touches_; }
  std::string description() const override;

  void _clearTouches() override { touches_.clear(); }
  // A touch that is in the event already is not added again.
  void _addTouch(const platform::UITouchRef& touch, bool forDelayedDelivery) override;
  void _setHIDEvent(const platform::IOHIDEventRef& event) override { hidEvent_ = event; }
  void _setGSEvent(const platform::GSEventRecord& event) override { gsEvent_ = event; }
  void _setTimestamp(double timestamp) override { timestamp_ = timestamp; }

  // A HIDEventRecord when HIDEventSystem made it; null when none was set.
  const platform::IOHIDEventRef& hidEvent() const { return hidEvent_; }
  const std::optional<platform::GSEventRecord>& gsEvent() const { return gsEvent_; }
  double timestamp() const { return timestamp_; }

 private:
  platform::UIEventType type_;
  std::vector<platform::UITouchRef> touches_;
  platform::IOHIDEventRef hidEvent_;
  std::optional<platform::GSEventRecord> gsEvent_;
  double timestamp_ = 0;
};

}  // namespace tarni::posix
