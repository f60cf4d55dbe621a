#include "backends/headless/events/EventLog.h"

#include <array>

#include "backends/headless/History.h"
#include "backends/posix/EventRecord.h"
#include "backends/posix/TouchRecord.h"

namespace tarni::headless {
namespace {

LoggedTouch logged(const platform::UITouch& touch) {
  LoggedTouch entry;
  entry.phase = touch.phase();
  entry.locationInWindow = touch.locationInView(nullptr);
  entry.timestamp = touch.timestamp();
  entry.tapCount = touch.tapCount();
  entry.view = touch.view();
  entry.window = touch.window();
  if (const auto* record = dynamic_cast<const posix::TouchRecord*>(&touch)) {
    entry.hidEvent = posix::recordOf(record->hidEvent());
    entry.isTap = record->isTap();
    entry.isFirstTouchForView = record->isFirstTouchForView();
    entry.gestureView = record->gestureView();
  }
  return entry;
}

}  // namespace

void EventLog::add(const platform::UIEvent& event) {
  LoggedEvent& entry = remember(events_, LoggedEvent{});
  entry.type = event.type();
  for (const platform::UITouchRef& touch : event.allTouches()) {
    entry.touches.push_back(logged(*touch));
  }
  if (const auto* record = dynamic_cast<const posix::EventRecord*>(&event)) {
    entry.hidEvent = posix::recordOf(record->hidEvent());
    entry.gsEvent = record->gsEvent();
    entry.timestamp = record->timestamp();
  }
}

std::string EventLog::phases() const {
  static constexpr std::array kNames{"Began", "Moved", "Stationary", "Ended", "Cancelled"};
  std::string text;
  for (const LoggedEvent& event : events_) {
    for (const LoggedTouch& touch : event.touches) {
      if (!text.empty()) text += ' ';
      text += kNames.at(static_cast<std::size_t>(touch.phase));
    }
  }
  return text;
}

}  // namespace tarni::headless
