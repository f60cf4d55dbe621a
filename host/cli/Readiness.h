// Readiness: whether the agent's ports are open, said once to the person who waits for it. Main
// thread.
#pragma once

#include <sys/types.h>

#include <string>

#include "host/guard/Clock.h"

namespace tarni::host {

// Throws std::runtime_error when somebody has one of the agent's ports in the network of that
// process ("self" or a decimal identifier).
void refuseTakenPorts(const std::string& networkOf = "self");

// Begins to wait when it is made.
class Readiness {
 public:
  // `hint` is said with it.
  explicit Readiness(std::string hint = "") : hint_(std::move(hint)) {}

  // True when there is nothing left to watch for: the ports of that process are open, or have not
  // opened in time, which is worth saying when they are expected to.
  bool check(pid_t pid, bool isExpected = true);
  // Whether the last check found them open.
  bool isReady() const { return isReady_; }

 private:
  std::string hint_;
  Clock::time_point start_ = Clock::now();
  bool isReady_ = false;
};

}  // namespace tarni::host
