// Socket: one connection within this machine, to a port or to a path, whose every operation ends by
// a deadline.
// Any thread, one at a time. All failures are WireErrors.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "host/guard/Clock.h"

namespace tarni::host {

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
