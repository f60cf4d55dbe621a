// RunLoopObserver: hears when the main thread is about to wait for events, and when it goes on. The
// application may have changed only in between, so that who waits for something of the application
// need not poll.
#pragma once

#include <string_view>

namespace tarni::platform {

// What a stretch began with in which the main thread served the main queue and nothing else.
inline constexpr std::string_view kMainQueueAlone = "main queue";

class RunLoopObserver {
 public:
  virtual ~RunLoopObserver() = default;
  // Main thread, in nested loops as well. Quick, and throws nothing.
  virtual void didWake() noexcept = 0;
  // `beganWith` names what the main thread handled first since it woke (the event's kind and the
  // class of what received it), or is `kMainQueueAlone`, since what the agent does by itself is
  // nothing that happened in the application; empty where the platform does not tell.
  virtual void willWait(std::string_view beganWith) noexcept = 0;
};

}  // namespace tarni::platform
