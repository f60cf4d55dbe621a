#include <chrono>
#include <thread>

#include "platform/Foundation/NSException.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

class RunLoopTest : public TouchScreen {
 protected:
  RunLoop& loop = environment.runLoop();
  std::vector<std::string> seen;
  platform::Block note(const char* text) {
    return [this, text] { seen.emplace_back(text); };
  }
};

TEST_F(RunLoopTest, AVirtualClockSkipsWaitsAndRunsTimersInOrder) {
  const double start = environment.processInfo().systemUptime();
  const double media = environment.processInfo().currentMediaTime();
  const auto ticks = environment.processInfo().machAbsoluteTime();
  const auto began = std::chrono::steady_clock::now();
  loop.after(3000, note("late"));
  loop.after(10, note("second"));
  loop.after(5, note("first"));
  loop.cancel(loop.after(7, note("cancelled")));
  loop.wait(1000);
  EXPECT_THAT(seen, testing::ElementsAre("first", "second"));
  EXPECT_GE(environment.processInfo().systemUptime() - start, 1000);
  EXPECT_GE(environment.processInfo().currentMediaTime() - media, 1000);
  EXPECT_GE(environment.processInfo().machAbsoluteTime() - ticks, 1'000'000'000'000U);
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(100));
}

TEST_F(RunLoopTest, ARealClockWaits) {
  environment.processInfo().setVirtual(false);
  const auto began = std::chrono::steady_clock::now();
  loop.after(0.01, note("timer"));
  loop.wait(0.05);
  EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(50));
  EXPECT_THAT(seen, testing::ElementsAre("timer"));
}

TEST_F(RunLoopTest, AWaitDoesNotServeTheMainQueue) {
  loop.async(note("main queue"));
  loop.post(note("posted"));
  complete(environment.application().runLoopRunInMode("mode", 5, false));
  EXPECT_THAT(seen, testing::ElementsAre("posted"));
  ASSERT_EQ(environment.application().runLoopRuns().size(), 1U);
  EXPECT_EQ(environment.application().runLoopRuns()[0].mode, "mode");
  EXPECT_TRUE(loop.pump());
  EXPECT_THAT(seen, testing::ElementsAre("posted", "main queue"));
}

TEST_F(RunLoopTest, OtherThreadsWakeIt) {
  std::thread other([&] { EXPECT_TRUE(loop.sync(note("sync"))); });
  EXPECT_TRUE(loop.runUntil([&] { return !seen.empty(); }, 30));
  other.join();
  std::thread stopper([&] { loop.stop(); });
  loop.run();
  stopper.join();
  EXPECT_TRUE(loop.runUntil([] { return true; })) << "a stop ends one run only";
  environment.processInfo().setVirtual(false);
  EXPECT_FALSE(loop.runUntil([] { return false; }, 0.02));
}

TEST_F(RunLoopTest, StopEndsNestedLoopsAsWell) {
  loop.post([&] {
    loop.post([&] { loop.stop(); });
    EXPECT_FALSE(loop.runUntil([] { return false; }));
    seen.emplace_back("inner ended");
  });
  loop.run();
  EXPECT_THAT(seen, testing::ElementsAre("inner ended"));
}

TEST_F(RunLoopTest, ExceptionsAreLoggedAndDropped) {
  loop.post([] { throw platform::NSException("Name", "a reason"); });
  loop.after(0, [] { throw 1; });
  loop.post(note("next"));
  EXPECT_TRUE(loop.runUntil([&] { return !seen.empty(); }, 30));
  EXPECT_TRUE(environment.log().contains("run loop: a reason"));
  EXPECT_TRUE(environment.log().contains("run loop: unknown exception"));
}

TEST_F(RunLoopTest, DelaysOfTheDispatcherReachTheMainQueue) {
  environment.dispatch().afterOnMain(0.01, note("delayed"));
  EXPECT_TRUE(loop.runUntil([&] { return !seen.empty(); }, 30));
}

}  // namespace
}  // namespace tarni::headless::test
