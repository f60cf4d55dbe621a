// EventLog: the latest events that were dispatched to the application, as they were at that
// moment. Main thread.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "backends/posix/HIDEventRecord.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::headless {

struct LoggedTouch {
  platform::UITouchPhase phase{};
  platform::CGPoint locationInWindow;
  double timestamp = 0;
  long tapCount = 0;
  platform::UIViewWeakRef view;
  platform::UIViewWeakRef window;
  // Null for touches of another backend or without a record.
  std::shared_ptr<posix::HIDEventRecord> hidEvent;
  bool isTap = false;
  bool isFirstTouchForView = false;
  platform::UIViewWeakRef gestureView;
};

struct LoggedEvent {
  platform::UIEventType type{};
  std::vector<LoggedTouch> touches;
  std::shared_ptr<posix::HIDEventRecord> hidEvent;
  std::optional<platform::GSEventRecord> gsEvent;
  double timestamp = 0;
};

class EventLog {
 public:
  void add(const platform::UIEvent& event);
  void clear() { events_.clear(); }
  const std::deque<LoggedEvent>& events() const { return events_; }
  // The phases of all touches in order, for example "Began Moved Moved Ended".
  std::string phases() const;

 private:
  std::deque<LoggedEvent> events_;
};

}  // namespace tarni::headless
