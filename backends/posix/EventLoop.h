// EventLoop: the one thread that watches descriptors and timers. What it calls runs on that thread
// and must not wait. Any thread may call it.
#pragma once

#include <memory>

#include "platform/Dispatch/Dispatch.h"

namespace tarni::posix {

enum class Readiness { Read, Write };

class EventLoop {
 public:
  EventLoop();

  // Runs `block` once `seconds` have passed.
  void after(double seconds, platform::Block block);
  // The same, until the timer is destroyed; a call that has begun by then is not waited for.
  std::unique_ptr<platform::DispatchTimer> startTimer(double seconds, platform::Block block);
  // Runs `block` for each `resume` of the source. Throws std::system_error when the descriptor
  // cannot be watched.
  std::unique_ptr<platform::DispatchSource> watch(int descriptor, Readiness readiness,
                                                  platform::Block block);

 private:
  struct Reactor;
  class Source;
  class Timer;

  Reactor& reactor_;  // used by the thread, never destroyed
};

}  // namespace tarni::posix
