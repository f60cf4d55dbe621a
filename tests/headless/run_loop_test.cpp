#include <chrono>
#include <thread>

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
  environment.processInfo().setVirtual(false);
  const auto real = std::chrono::steady_clock::now();
  loop.wait(0.05);
  EXPECT_GE(std::chrono::steady_clock::now() - real, std::chrono::milliseconds(50));
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
  loop.post([&] {
    loop.post([&] { loop.stop(); });
    EXPECT_FALSE(loop.runUntil([] { return false; }));
    seen.emplace_back("inner ended");
  });
  loop.run();
  EXPECT_EQ(seen.back(), "inner ended") << "it ends nested loops as well";
}

TEST_F(RunLoopTest, TheLoopSaysWhatItDidBetweenItsSleeps) {
  struct Log : platform::RunLoopObserver {
    void didWake() noexcept override {}
    void willWait(std::string_view beganWith) noexcept override { began.emplace_back(beganWith); }
    std::vector<std::string> began;
  } log;
  environment.processInfo().setVirtual(false);
  environment.application().setRunLoopObserver(&log);
  const auto later = [&](auto block) {
    environment.dispatch().mainQueue().async([this, block] { loop.after(0.02, block); });
  };
  later([&] { later([&] { loop.stop(); }); });
  loop.run();
  environment.application().setRunLoopObserver(nullptr);
  EXPECT_THAT(log.began, testing::ElementsAre(platform::kMainQueueAlone, "timer"));
}

}  // namespace
}  // namespace tarni::headless::test
