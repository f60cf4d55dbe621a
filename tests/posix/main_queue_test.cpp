#include <coroutine>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "tests/posix/PosixTest.h"

namespace tarni::test {
namespace {

using platform::Task;

// Suspends whoever awaits it until `open`, which resumes on the calling thread.
class Gate {
 public:
  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> waiting) noexcept { waiting_ = waiting; }
  void await_resume() const noexcept {}
  bool isWaitedFor() const { return static_cast<bool>(waiting_); }
  void open() { std::exchange(waiting_, nullptr).resume(); }

 private:
  std::coroutine_handle<> waiting_;
};

Task<void> enterAndWait(std::string& trace, Gate& gate) {
  trace += "enter ";
  co_await gate;
  trace += "leave ";
}

Task<void> fail() {
  throw std::runtime_error("broken item");
  co_return;
}

class MainQueueTest : public PosixTest {
 protected:
  bool run(const std::function<bool()>& isDone) { return mainQueue_.runUntil(isDone); }

  std::string trace_;
};

TEST_F(MainQueueTest, ItemsRunInOrderOnTheMainThread) {
  std::thread other([this] {
    for (int i = 0; i < 5; ++i) {
      mainQueue_.async([this, i] {
        EXPECT_TRUE(mainQueue_.isMainThread());
        trace_ += std::to_string(i);
      });
    }
  });
  other.join();
  EXPECT_TRUE(run([this] { return trace_.size() == 5; }));
  EXPECT_EQ(trace_, "01234");
}

TEST_F(MainQueueTest, NothingRunsInsideTheCallThatAppendsIt) {
  mainQueue_.async([this] {
    mainQueue_.async([this] { trace_ += "second"; });
    trace_ += "first ";
  });
  EXPECT_EQ(trace_, "");
  EXPECT_TRUE(run([this] { return trace_ == "first second"; }));
}

TEST_F(MainQueueTest, TheNextItemWaitsForASuspendedOne) {
  Gate gate;
  mainQueue_.asyncTask([this, &gate] { return enterAndWait(trace_, gate); });
  mainQueue_.async([this] { trace_ += "next"; });
  EXPECT_TRUE(run([&] { return gate.isWaitedFor(); }));
  mainQueue_.drain();
  EXPECT_EQ(trace_, "enter ");

  gate.open();
  EXPECT_EQ(trace_, "enter leave ") << "the next item starts from the loop, not from a resumption";
  EXPECT_TRUE(run([this] { return trace_ == "enter leave next"; }));
}

TEST_F(MainQueueTest, ANestedLoopServesNoItem) {
  mainQueue_.async([this] {
    mainQueue_.async([this] { trace_ += "next"; });
    mainQueue_.post([this] { trace_ += "event "; });
    run([this] { return trace_ == "event "; });
    mainQueue_.drain();
    trace_ += "end ";
  });
  EXPECT_TRUE(run([this] { return trace_.ends_with("next"); }));
  EXPECT_EQ(trace_, "event end next");
}

TEST_F(MainQueueTest, AFailingItemIsLoggedAndEndsThere) {
  mainQueue_.asyncTask(fail);
  mainQueue_.asyncTask([]() -> Task<void> { throw std::runtime_error("never became a task"); });
  mainQueue_.async([] { throw 7; });
  bool isDone = false;
  mainQueue_.async([&] { isDone = true; });
  EXPECT_TRUE(run([&] { return isDone; }));
  const std::vector<std::string> expected{"main queue: broken item",
                                          "main queue: never became a task",
                                          "main queue: unknown exception"};
  EXPECT_EQ(log_.lines(), expected);
}

TEST_F(MainQueueTest, SyncWaitsForTheEndOfASuspendedItem) {
  Gate gate;
  std::atomic<bool> hasReturned = false;
  std::thread other([&] {
    EXPECT_TRUE(mainQueue_.syncTask([this, &gate] { return enterAndWait(trace_, gate); }));
    hasReturned = true;
    mainQueue_.post([] {});
  });
  EXPECT_TRUE(run([&] { return gate.isWaitedFor(); }));
  EXPECT_FALSE(hasReturned);
  gate.open();
  EXPECT_TRUE(run([&] { return hasReturned.load(); }));
  other.join();
}

TEST_F(MainQueueTest, SyncOnTheMainThreadIsRefused) {
  EXPECT_FALSE(mainQueue_.sync([this] { trace_ = "run"; }));
  EXPECT_EQ(trace_, "");
  EXPECT_EQ(log_.lines().size(), 1U);
}

TEST_F(MainQueueTest, ClosingAnswersWhoeverWaitsAndDropsTheRest) {
  auto token = std::make_shared<int>();
  mainQueue_.async([token] {});
  std::future<bool> pending = std::async(
      std::launch::async, [this] { return mainQueue_.sync([this] { trace_ += "pending"; }); });
  // The queue was woken once for both; nobody drains it before it closes.
  while (pending.wait_for(std::chrono::milliseconds(1)) == std::future_status::timeout) {
    mainQueue_.close();
  }
  EXPECT_FALSE(pending.get());
  EXPECT_EQ(token.use_count(), 1);
  std::thread([this] { EXPECT_FALSE(mainQueue_.sync([this] { trace_ += "later"; })); }).join();
  mainQueue_.drain();
  EXPECT_EQ(trace_, "");
}

TEST_F(MainQueueTest, AnEndlessSupplyOfItemsLeavesTheLoopItsTurn) {
  bool isStopped = false;
  std::function<void()> again = [&] {
    if (!isStopped) mainQueue_.async(again);
  };
  mainQueue_.async(again);
  mainQueue_.post([&] { isStopped = true; });
  EXPECT_TRUE(run([&] { return isStopped; }));
}

TEST_F(MainQueueTest, ItemsThatWaitTogetherCostOneWake) {
  for (int i = 0; i < 100; ++i) mainQueue_.async([this] { trace_ += '.'; });
  EXPECT_EQ(mainQueue_.wakes(), 1);
  EXPECT_TRUE(run([this] { return trace_.size() == 100; }));
  EXPECT_EQ(mainQueue_.wakes(), 1);
}

}  // namespace
}  // namespace tarni::test
