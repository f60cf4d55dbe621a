// QtTouchesEvent: the application's one event for synthesized touches. Touches of real fingers
// travel in an event of their own, so that a finger that comes between two steps of a gesture does
// not change what the gesture sends again. GUI thread.
#pragma once

#include "backends/posix/EventRecord.h"

namespace tarni::qt {

class QtTouchesEvent : public posix::EventRecord {
 public:
  void _clearTouches() override {
    ++fills_;
    EventRecord::_clearTouches();
  }

  // How often the event was cleared to be filled anew.
  unsigned long fills() const { return fills_; }

 private:
  unsigned long fills_ = 0;
};

}  // namespace tarni::qt
