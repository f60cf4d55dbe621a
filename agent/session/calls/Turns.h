// Turns: the calls that want the program's main thread, one after the other. One alone stands in
// the main queue at a time, so that between two of them comes whatever else waits there, however
// many requests a client has sent at once. Any thread.
#pragma once

#include <deque>
#include <mutex>

#include "agent/session/calls/Call.h"
#include "platform/Task.h"

namespace tarni::session {

class Turns {
 public:
  static Turns& sharedInstance();

  // The call gets a turn behind those that wait.
  void add(CallRef call);

 private:
  void post();
  platform::Task<void> next();

  std::mutex mutex_;
  std::deque<CallRef> waiting_;
  bool isPosted_ = false;
};

}  // namespace tarni::session
