#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <future>
#include <latch>
#include <thread>
#include <vector>

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

TEST_F(PosixTest, ABeatStaysOnItsThreadAndKeepsNobodyWaiting) {
  platform::DispatchQueue& background = dispatch_.backgroundQueue();
  std::vector<std::thread::id> threads;
  std::promise<void> end;
  const std::function<void()> beat = [&] {
    threads.push_back(std::this_thread::get_id());
    if (threads.size() == 4) return end.set_value();
    std::promise<void> between;
    background.async([&] { between.set_value(); });
    between.get_future().wait();
    dispatch_.after(0.01, background, beat);
  };
  dispatch_.after(0.01, background, beat);
  std::future<void> reached = end.get_future();
  ASSERT_TRUE(reached.wait_for(std::chrono::seconds(20)) == std::future_status::ready);
  EXPECT_EQ(std::ranges::count(threads, threads.front()), 4);
}

}  // namespace
}  // namespace tarni::test
