#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <future>
#include <latch>
#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/posix/PosixTest.h"

namespace tarni::test {
namespace {

using Queue = std::shared_ptr<platform::DispatchQueue>;

constexpr auto kLongTime = std::chrono::seconds(20);

// Waits until everything that the queue had to do is done.
void settle(platform::DispatchQueue& queue) {
  queue.sync([] {});
}

bool isReached(std::future<void>& moment) {
  return moment.wait_for(kLongTime) == std::future_status::ready;
}

class DispatchTest : public PosixTest {
 protected:
  DispatchTest() {
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends_.data()), 0);
  }
  ~DispatchTest() override {
    for (const int end : ends_) close(end);
  }

  void sendByte() { EXPECT_EQ(write(ends_[1], "x", 1), 1); }
  void receiveByte() {
    char byte = 0;
    EXPECT_EQ(read(ends_[0], &byte, 1), 1);
  }

  std::array<int, 2> ends_{-1, -1};
  Queue queue_ = dispatch_.makeSerialQueue("test queue");
};

TEST_F(DispatchTest, ASerialQueueKeepsTheOrderOfEachSenderAndNeverOverlaps) {
  constexpr int kSenders = 4;
  constexpr int kBlocks = 500;
  std::array<std::vector<int>, kSenders> seen;
  int inside = 0;
  std::vector<std::thread> threads;
  for (int sender = 0; sender < kSenders; ++sender) {
    threads.emplace_back([&, sender] {
      for (int i = 0; i < kBlocks; ++i) {
        const auto block = [&, sender, i] {
          EXPECT_EQ(++inside, 1);
          seen[static_cast<std::size_t>(sender)].push_back(i);
          --inside;
        };
        if (i % 7 == 0) {
          queue_->sync(block);
        } else {
          queue_->async(block);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  settle(*queue_);
  for (const std::vector<int>& order : seen) {
    ASSERT_EQ(order.size(), kBlocks);
    EXPECT_TRUE(std::ranges::is_sorted(order));
  }
}

TEST_F(DispatchTest, AQueueKnowsItsOwnBlocks) {
  EXPECT_EQ(queue_->label(), "test queue");
  EXPECT_FALSE(queue_->isConcurrent());
  EXPECT_FALSE(queue_->isCurrent());
  const Queue other = dispatch_.makeSerialQueue("other");
  queue_->sync([&] {
    EXPECT_TRUE(queue_->isCurrent());
    EXPECT_FALSE(other->isCurrent());
    bool hasRun = false;
    other->sync([&] { queue_->sync([&] { hasRun = true; }); });
    EXPECT_TRUE(hasRun) << "a queue that waits for itself over another goes on at once";
  });
  EXPECT_TRUE(dispatch_.backgroundQueue().isConcurrent());
}

TEST_F(DispatchTest, WhatABlockHoldsMayWaitForTheQueueAsItGoes) {
  struct Held {
    ~Held() {
      settle(*queue);
      isGone.set_value();
    }
    Queue queue;
    std::promise<void> isGone;
  };
  std::vector<std::future<void>> gone;
  const auto hold = [&] {
    auto held = std::make_shared<Held>();
    held->queue = queue_;
    gone.push_back(held->isGone.get_future());
    return [held = std::move(held)] {};
  };
  queue_->async(hold());
  dispatch_.after(0, *queue_, hold());
  dispatch_.makeTimer(1000, queue_, hold()).reset();
  dispatch_.makeReadSource(ends_[0], queue_, hold()).reset();
  for (std::future<void>& one : gone) EXPECT_TRUE(isReached(one));
}

TEST_F(DispatchTest, ManyQueuesMayWaitForEachOther) {
  constexpr std::size_t kLength = 100;
  std::vector<Queue> chain;
  for (std::size_t i = 0; i < kLength; ++i) chain.push_back(dispatch_.makeSerialQueue("link"));
  std::promise<void> end;
  std::function<void(std::size_t)> next = [&](std::size_t i) {
    if (i == kLength) return end.set_value();
    chain[i]->async([] {});
    chain[i]->sync([&, i] { next(i + 1); });
  };
  chain[0]->async([&] { next(1); });
  std::future<void> reached = end.get_future();
  EXPECT_TRUE(isReached(reached));
  for (const Queue& queue : chain) settle(*queue);
}

TEST_F(DispatchTest, ABlockThatThrowsEndsThere) {
  queue_->async([] { throw std::runtime_error("broken block"); });
  dispatch_.backgroundQueue().async([] { throw std::runtime_error("broken worker"); });
  settle(*queue_);
  EXPECT_TRUE(log_.waitFor("test queue: broken block"));
  EXPECT_TRUE(log_.waitFor("background: broken worker"));
}

TEST_F(DispatchTest, SleepersOfTheBackgroundQueueKeepNobodyWaiting) {
  constexpr int kSleepers = 8;
  const auto together = std::make_shared<std::latch>(kSleepers);
  std::promise<void> all;
  for (int i = 0; i < kSleepers; ++i) {
    dispatch_.backgroundQueue().async([&all, together, i] {
      together->arrive_and_wait();
      if (i == 0) all.set_value();
    });
  }
  std::future<void> reached = all.get_future();
  EXPECT_TRUE(isReached(reached));
}

TEST_F(DispatchTest, DelaysEndInTheirOrderOnTheirQueue) {
  std::string trace;
  std::promise<void> end;
  dispatch_.after(0.06, *queue_, [&] {
    EXPECT_TRUE(queue_->isCurrent());
    trace += "c";
    end.set_value();
  });
  dispatch_.after(0.03, *queue_, [&] { trace += "b"; });
  dispatch_.after(-1, *queue_, [&] { trace += "a"; });
  std::future<void> reached = end.get_future();
  EXPECT_TRUE(isReached(reached));
  EXPECT_EQ(trace, "abc");
}

TEST_F(DispatchTest, ACancelledTimerDoesNotFireEvenWhenItWaitsOnItsQueue) {
  std::atomic<bool> hasFired = false;
  std::unique_ptr<platform::DispatchTimer> timer;
  std::promise<void> isLate;
  queue_->sync([&] {
    timer = dispatch_.makeTimer(0, queue_, [&] { hasFired = true; });
    dispatch_.after(0.02, dispatch_.backgroundQueue(), [&] { isLate.set_value(); });
    isLate.get_future().wait();
    timer.reset();
  });
  settle(*queue_);
  EXPECT_FALSE(hasFired);
}

TEST_F(DispatchTest, ASourceFiresOncePerResume) {
  std::atomic<int> events = 0;
  std::promise<void> first;
  const auto source = dispatch_.makeReadSource(ends_[0], queue_, [&] {
    EXPECT_TRUE(queue_->isCurrent());
    if (++events == 1) first.set_value();
  });
  sendByte();
  settle(*queue_);
  EXPECT_EQ(events, 0) << "a source starts suspended";
  source->resume();
  std::future<void> reached = first.get_future();
  EXPECT_TRUE(isReached(reached));
  sendByte();
  std::promise<void> isLate;
  dispatch_.after(0.02, *queue_, [&] { isLate.set_value(); });
  isLate.get_future().wait();
  EXPECT_EQ(events, 1) << "what is left unread does not fire again by itself";
  source->resume();
  while (events < 2) std::this_thread::yield();
}

TEST_F(DispatchTest, ADestroyedSourceIsSilentAndItsDescriptorCanBeWatchedAnew) {
  std::atomic<int> stale = 0;
  for (int round = 0; round < 50; ++round) {
    auto source = dispatch_.makeReadSource(ends_[0], queue_, [&] { ++stale; });
    queue_->sync([&] {
      source->resume();
      sendByte();
      source.reset();
    });
    receiveByte();
  }
  std::promise<void> fresh;
  const auto source = dispatch_.makeReadSource(ends_[0], queue_, [&] { fresh.set_value(); });
  source->resume();
  sendByte();
  std::future<void> reached = fresh.get_future();
  EXPECT_TRUE(isReached(reached));
  EXPECT_EQ(stale, 0);
}

}  // namespace
}  // namespace tarni::test
