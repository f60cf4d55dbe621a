// Recording: tells clients what a person does, step by step, from when the first of them asks until
// the last has gone or had enough. Main thread.
#pragma once

#include <memory>

#include "agent/acts/Acts.h"
#include "agent/session/calls/Audience.h"

namespace tarni::session {

class Recording {
 public:
  static Recording& sharedInstance();

  // False when the platform does not tell what a person does.
  bool start(const std::shared_ptr<const Notify>& client);
  // The client has been sent every step when this returns.
  void stop(const std::shared_ptr<const Notify>& client);
  // Every client has.
  void finish();

 private:
  Recording();
  void tell(const Act& act);

  Acts acts_;
  Audience audience_;
};

}  // namespace tarni::session
