// Event: a UIEvent, the shared one that the agent refills or any that the application dispatches.
// Main thread.
#pragma once

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Owned.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::ios {

class Event : public platform::UIEvent {
 public:
  // Nil is an event without touches that nobody can send.
  explicit Event(::UIEvent* event) : event_(event) {}

  ::UIEvent* native() const { return event_.get(); }

  platform::UIEventType type() const override;
  // UIKit keeps a set: the order is the one in which the touches were first seen.
  const std::vector<platform::UITouchRef>& allTouches() const override;
  std::string description() const override;

  void _clearTouches() override;
  void _addTouch(const platform::UITouchRef& touch, bool forDelayedDelivery) override;
  void _setHIDEvent(const platform::IOHIDEventRef& event) override;
  void _setGSEvent(const platform::GSEventRecord& event) override;
  void _setTimestamp(double timestamp) override;

 private:
  Owned<::UIEvent*> event_;
  mutable std::vector<platform::UITouchRef> touches_;
  platform::GSEventRecord gsEvent_;  // the platform keeps its address
};

}  // namespace tarni::ios
