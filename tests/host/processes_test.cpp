// The processes that a program starts, while they come and go.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "host/launch/RunningProgram.h"

namespace tarni::test {
namespace {

TEST(Processes, MayEndWhileTheyAreLookedAt) {
  std::atomic<bool> isOver = false;
  std::thread starting([&isOver] {
    while (!isOver) {
      const pid_t child = fork();
      if (child == 0) _exit(0);
      waitpid(child, nullptr, 0);
    }
  });
  for (int look = 0; look < 1'000; ++look) {
    EXPECT_NO_THROW(EXPECT_EQ(host::processesFrom(getpid()).front().pid, getpid()));
  }
  isOver = true;
  starting.join();
}

}  // namespace
}  // namespace tarni::test
