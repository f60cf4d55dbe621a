// Socket: one connection within this machine, to a port or to a path, whose every operation ends by
// a deadline.
// Any thread, one at a time. All failures are WireErrors.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarni::host {

using Clock = std::chrono::steady_clock;
using Deadline = Clock::time_point;

// When that time is over; of one that is longer than a year, which the clock may not hold, the
// year.
inline Deadline deadlineIn(std::chrono::milliseconds time) {
  return Clock::now() + std::min<std::chrono::milliseconds>(time, std::chrono::hours(24 * 365));
}

class Socket {
 public:
  // Tries 127.0.0.1 and ::1 in turn until one accepts or the deadline passes.
  static Socket connectToThisMachine(std::uint16_t port, Deadline deadline);

  // Tries the socket of that path until it is accepted or the deadline passes.
  static Socket connectToPath(const std::string& path, Deadline deadline);

  Socket(Socket&& other) noexcept;
  Socket& operator=(Socket&& other) noexcept;
  ~Socket();

  void write(std::string_view bytes, Deadline deadline);

  enum class Ready { Data, Woken, TimedOut };
  // Waits until bytes or the end of the stream can be read, or one of the descriptors `wakeOn` has
  // something to read.
  Ready waitForData(Deadline deadline, std::span<const int> wakeOn = {});

  // What has arrived; empty at the end of the stream.
  std::string read();

  // On any thread, while the socket lives: the stream ends on both sides.
  void shutDown();

 private:
  explicit Socket(int descriptor) : descriptor_(descriptor) {}

  int descriptor_ = -1;
};

}  // namespace tarni::host
