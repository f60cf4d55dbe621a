#include <pthread.h>
#include <signal.h>

#include <array>
#include <latch>

#include "tests/posix/PosixTest.h"

namespace tarni::test {
namespace {

TEST_F(PosixTest, OurThreadsTakeNoSignalsAndHaveNames) {
  const auto queue = dispatch_.makeSerialQueue("test queue");
  const auto inspect = [](const std::string& expectedName) {
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    EXPECT_TRUE(sigismember(&blocked, SIGTERM) && sigismember(&blocked, SIGCHLD) &&
                sigismember(&blocked, SIGUSR1));
    std::array<char, 16> name{};
    pthread_getname_np(pthread_self(), name.data(), name.size());
    EXPECT_EQ(name.data(), expectedName);
  };
  std::latch both(2);
  queue->async([&] {
    inspect("tarni-queue");
    both.count_down();
  });
  dispatch_.backgroundQueue().async([&] {
    inspect("tarni-bg");
    both.count_down();
  });
  both.wait();
  sigset_t own;
  pthread_sigmask(SIG_SETMASK, nullptr, &own);
  EXPECT_FALSE(sigismember(&own, SIGTERM)) << "the caller's mask is left as it was";
}

}  // namespace
}  // namespace tarni::test
