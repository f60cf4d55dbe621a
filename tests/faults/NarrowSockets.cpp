#include "tests/faults/NarrowSockets.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>

namespace {

std::atomic<long> narrowTo = 0;  // 0 is as wide as they are
std::atomic<long> calls = 0;
std::atomic<long> cutCalls = 0;

// Only the agent's sockets do not block.
bool isNarrow(int descriptor) {
  return narrowTo > 0 && (fcntl(descriptor, F_GETFL) & O_NONBLOCK) != 0;
}

template <typename Call>
ssize_t narrowly(int descriptor, std::size_t length, Call call) {
  if (!isNarrow(descriptor)) return call(length);
  const long number = ++calls;
  if (number % 7 == 0 || number % 5 == 0) {
    ++cutCalls;
    errno = number % 7 == 0 ? EINTR : EAGAIN;
    return -1;
  }
  const std::size_t width = std::min(length, static_cast<std::size_t>(narrowTo));
  if (width < length) ++cutCalls;
  return call(width);
}

}  // namespace

// The names are the linker's.
extern "C" {
ssize_t __real_recv(int descriptor, void* buffer, size_t length, int flags);      // NOLINT
ssize_t __real_send(int descriptor, const void* data, size_t length, int flags);  // NOLINT

ssize_t __wrap_recv(int descriptor, void* buffer, size_t length, int flags) {  // NOLINT
  return narrowly(descriptor, length,
                  [=](std::size_t width) { return __real_recv(descriptor, buffer, width, flags); });
}

ssize_t __wrap_send(int descriptor, const void* data, size_t length, int flags) {  // NOLINT
  return narrowly(descriptor, length,
                  [=](std::size_t width) { return __real_send(descriptor, data, width, flags); });
}
}

namespace tarni::test {

NarrowSockets::NarrowSockets(long width) {
  cutCalls = 0;
  narrowTo = width;
}

NarrowSockets::~NarrowSockets() {
  narrowTo = 0;
}

long NarrowSockets::cuts() const {
  return cutCalls;
}

}  // namespace tarni::test
