// Reaper: a process that cleans up after this one when it is killed, so that nothing stays behind:
// neither a program that was started with means of its own nor what was made for it. Made on the
// main thread of a process without other threads, before what it is to clean up.
#pragma once

#include <sys/types.h>

#include <functional>

namespace tarni::host {

class Reaper {
 public:
  // When this process is gone without having destroyed the reaper, that ends the program, if it is
  // to end with this process, or else waits for its end, and calls `cleanUp`, in a process which
  // knows what was known here when the reaper was made. The program is 0 when none was started.
  // Throws std::runtime_error when no process can be made.
  Reaper(bool endsProgram, const std::function<void(pid_t program)>& cleanUp);
  Reaper(const Reaper&) = delete;
  Reaper& operator=(const Reaper&) = delete;
  // The owner has cleaned up itself.
  ~Reaper();

  // The program has been started, but has not begun.
  void watch(pid_t program) const;

 private:
  int notes_ = -1;
  pid_t pid_ = -1;
};

}  // namespace tarni::host
