// Clock: the one by which the host's side waits, and moments on it. Plain values, any thread.
#pragma once

#include <algorithm>
#include <chrono>

namespace tarni::host {

using Clock = std::chrono::steady_clock;
using Deadline = Clock::time_point;

// When that time is over; of one that is longer than a year, which the clock may not hold, the
// year.
inline Deadline deadlineIn(std::chrono::milliseconds time) {
  return Clock::now() + std::min<std::chrono::milliseconds>(time, std::chrono::hours(24 * 365));
}

inline double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace tarni::host
