#include "agent/TcpCommunication/GCDAsyncSocket/ForkedChildren.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>

namespace tarni::ForkedChildren {
namespace {

constexpr int kNone = -1;
constexpr int kClaimed = -2;

// A child may be forked at any moment, so no lock guards them.
struct Entry {
  std::atomic<int> descriptor = kNone;
  std::atomic<ino_t> inode = 0;
};

constinit std::array<Entry, 64> entries;

ino_t inodeOf(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 ? status.st_ino : 0;
}

// The program may have closed the descriptor behind our back and use its number for another file.
bool isStill(const Entry& entry, int descriptor) {
  return descriptor >= 0 && inodeOf(descriptor) == entry.inode;
}

void replaceInChild() {
  const int nowhere = socket(AF_INET, SOCK_STREAM, 0);
  for (Entry& entry : entries) {
    const int descriptor = entry.descriptor.exchange(kNone);
    if (!isStill(entry, descriptor)) continue;
    if (nowhere < 0) {
      close(descriptor);
    } else if (dup2(nowhere, descriptor) == descriptor) {
      fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
  }
  if (nowhere >= 0) close(nowhere);
}

}  // namespace

void keepFrom(int descriptor) {
  static const int registered = pthread_atfork(nullptr, nullptr, replaceInChild);
  if (registered != 0) return;
  for (Entry& entry : entries) {
    int expected = kNone;
    if (!entry.descriptor.compare_exchange_strong(expected, kClaimed)) continue;
    entry.inode = inodeOf(descriptor);
    entry.descriptor = descriptor;
    return;
  }
}

void leaveTo(int descriptor) {
  for (Entry& entry : entries) {
    int expected = descriptor;
    if (entry.descriptor.compare_exchange_strong(expected, kNone)) return;
  }
}

}  // namespace tarni::ForkedChildren
