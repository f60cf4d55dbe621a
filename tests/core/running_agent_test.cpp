// The agent as it runs: its hooks, its threads and its servers. Each case is a process of its own,
// since the agent never ends.
#include <gtest/gtest.h>

#include <future>
#include <nlohmann/json.hpp>

#include "agent/Queue/ElementsQueue.h"
#include "agent/Queue/RecorderQueue.h"
#include "agent/TcpCommunication/BaseManager/ServerManager.h"
#include "agent/core/startup/Load.h"
#include "agent/core/startup/RecordControl.h"
#include "agent/core/startup/TcpChannel.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/IdentityTag.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/TextField.h"
#include "tests/support/Screen.h"
#include "tests/support/Wire.h"

namespace tarni {
namespace {

using nlohmann::ordered_json;

class RunningAgent : public test::Screen {
 protected:
  RunningAgent() { environment.processInfo().setVirtual(false); }

  void waitUntil(const std::function<bool()>& done) {
    ASSERT_TRUE(environment.runLoop().runUntil(
        [&] {
          environment.runLoop().after(0.01, [] {});
          return done();
        },
        test::kPatience.count()));
  }
  // What a host tool does, while the application runs.
  template <typename Work>
  auto asHost(Work work) {
    auto answer = std::async(std::launch::async, work);
    waitUntil(
        [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    return answer.get();
  }
  bool isTagged(const headless::ViewRef& view) {
    return ElementsQueue::getTarniIdOfUIView(view).has_value();
  }
};

TEST_F(RunningAgent, TapThatEndsTheApplicationIsSentBeforeItsEnd) {
  const auto field =
      headless::build<headless::TextField>("Name").frame({{0, 50}, {100, 40}}).in(*window);
  const auto quit =
      headless::build<headless::Button>("Quit").frame({{0, 0}, {100, 40}}).in(*window);
  // From here on the application does nothing but end: no thread of the agent gets the main thread.
  quit->onTap([] { RecordControl::applicationWillTerminate(); });
  loadAgent();
  const test::Wire host = asHost([] { return test::Wire(ServerManager::kRecorderPort); });
  asHost([&] { return host.readMessage(); });
  field->focus();
  field->type("Ada");
  waitUntil([&] { return GlobalVars::sharedInstance()._editAbleElement() == field; });
  environment.finger().tap(*quit);
  EXPECT_EQ(ordered_json::parse(host.readMessage())[0]["arguments"][1]["data"], "Ada");
  EXPECT_EQ(ordered_json::parse(host.readMessage())[0]["arguments"][0]["sahiText"], "Quit");
}

TEST_F(RunningAgent, HookWalksNoMoreOncePlaybackHasStarted) {
  const auto first = plainView({{0, 0}, {10, 10}});
  loadAgent();
  waitUntil([&] { return isTagged(first); });
  GlobalVars::sharedInstance().set_isPlaybackStarted("true");
  const auto later = plainView({{0, 0}, {10, 10}});
  // The injection that every tick queues shows the ticks: it gives views their playback tags.
  const auto isSeen = [&](const headless::ViewRef& view) {
    return view->layer().tag(kPlaybackTag).number() != 0;
  };
  waitUntil([&] { return isSeen(later); });
  const auto last = plainView({{0, 0}, {10, 10}});
  waitUntil([&] { return isSeen(last); });
  EXPECT_FALSE(isTagged(last));
}

TEST_F(RunningAgent, HookLeavesAProgramAloneThatDoesNothingAndSeesWhatATimerChanges) {
  headless::RunLoop& loop = environment.runLoop();
  const auto first = plainView({{0, 0}, {10, 10}});
  loadAgent();
  waitUntil([&] { return isTagged(first); });
  loop.runUntil([] { return false; }, 0.5);
  const std::uint64_t before = loop.workCount();
  loop.runUntil([] { return false; }, 1);
  // The test's own call, and a tick that sees that the test has had the main thread before it.
  EXPECT_LE(loop.workCount() - before, 2U);

  headless::ViewRef later;
  loop.after(0.3, [&] { later = plainView({{0, 0}, {10, 10}}); });
  EXPECT_TRUE(loop.runUntil([&] { return later && isTagged(later); }, test::kPatience.count()));
}

class Sender : public RunningAgent {
 protected:
  Sender() {
    ServerManager::serverManager().initialiseRecorderServerOnPortNumberWithRecorderRequest(
        ServerManager::kRecorderPort, "hello");
    host.emplace(asHost([] { return test::Wire(ServerManager::kRecorderPort); }));
    EXPECT_EQ(read(), "hello");
  }
  std::string read() {
    return asHost([this] { return host->readMessage(); });
  }
  void send() {
    asHost([] {
      TcpChannel::sendPendingSteps();
      return true;
    });
  }
  static void queueItems(int first, int last) {
    for (int item = first; item <= last; ++item) {
      RecorderQueue::get().enqueue(ordered_json::array({std::to_string(item)}));
    }
  }

  std::optional<test::Wire> host;
};

TEST_F(Sender, SendsWebStepsFirstAndThenEveryItem) {
  queueItems(1, 3);
  GlobalVars::sharedInstance().set_hybridRecordedSteps("steps of a page");
  send();
  EXPECT_EQ(read(), "steps of a page");
  EXPECT_EQ(read(), R"(["1"])");
  EXPECT_EQ(read(), R"(["2"])");
  EXPECT_EQ(read(), R"(["3"])");
  EXPECT_FALSE(GlobalVars::sharedInstance()._hybridRecordedSteps());
}

TEST_F(Sender, InSpyModeSendsTheFirstAndDropsTheOthers) {
  GlobalVars::sharedInstance().set_spyMode("true");
  queueItems(1, 5);
  send();
  EXPECT_EQ(RecorderQueue::get().getLength(), 0U);
  GlobalVars::sharedInstance().set_spyMode("false");
  queueItems(6, 6);
  send();
  EXPECT_EQ(read(), R"(["1"])");
  EXPECT_EQ(read(), R"(["6"])");
}

}  // namespace
}  // namespace tarni
