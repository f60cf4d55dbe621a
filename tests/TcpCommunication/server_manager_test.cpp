#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "agent/TcpCommunication/BaseManager/ServerManager.h"
#include "backends/posix/Dispatch.h"
#include "backends/posix/EventRecord.h"
#include "backends/posix/ProcessInfo.h"
#include "backends/posix/TouchRecord.h"
#include "platform/Platform.h"
#include "tests/posix/Immortal.h"
#include "tests/posix/LineLog.h"
#include "tests/posix/LoopMainQueue.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using platform::CFRunLoopRunResult;
using platform::Task;
using testing::Contains;
using testing::StartsWith;

const std::string kRecorderGreeting = "Welcome! RecorderServer StartedSuccessfully ";
const std::string kPlaybackGreeting = "Welcome PlayBackServer Started Successfully (v25-Mar-2019)";

// An application without a window, which says how it was asked to run.
class BareApplication : public platform::UIApplication {
 public:
  explicit BareApplication(LineLog& log) : log_(log) {}

  platform::UIWindowRef keyWindow() const override { return nullptr; }
  std::vector<platform::UIWindowRef> windowsWithKeyWindow() const override { return {}; }
  std::vector<platform::UIWindowRef> windowsThatTakeInput() const override { return {}; }
  Task<void> makeKeyWindow(platform::UIWindowRef /*window*/) override { co_return; }
  platform::UITouchRef makeTouch() override { return std::make_shared<posix::TouchRecord>(); }
  platform::UIEvent& _touchesEvent() override { return event_; }
  Task<void> sendEvent(platform::UIEvent& /*event*/) override { co_return; }
  void setRunLoopObserver(platform::RunLoopObserver* /*observer*/) override {}
  bool openURL(std::string_view /*url*/) override { return false; }
  Task<CFRunLoopRunResult> runLoopRunInMode(std::string mode, double seconds,
                                            bool /*returnAfterSourceHandled*/) override {
    log_.write("run loop in " + mode + " for " + std::to_string(seconds));
    co_return CFRunLoopRunResult::TimedOut;
  }

 private:
  LineLog& log_;
  posix::EventRecord event_;
};

// The servers on a main thread of their own. What threads may still use is never destroyed.
class ServerManagerTest : public testing::Test {
 protected:
  ServerManagerTest() {
    std::promise<LoopMainQueue*> started;
    std::thread([&started] {
      auto& queue = immortal<LoopMainQueue>();
      started.set_value(&queue);
      for (;;) queue.runUntil([] { return false; });
    }).detach();
    mainQueue_ = started.get_future().get();

    platform::Platform platform;
    platform.log = &log_;
    platform.dispatch = &immortal<posix::Dispatch>(*mainQueue_);
    platform.processInfo = &immortal<posix::ProcessInfo>();
    platform.application = &immortal<BareApplication>(log_);
    platform::install(platform);
    manager_ = ServerManager::make();
  }

  // The ports are free again for the next case.
  ~ServerManagerTest() override {
    manager_->recorderServerSocket()->setDelegate({});
    manager_->playBackServerSocket()->setDelegate({});
    manager_->recorderServerSocket()->disconnect();
    manager_->playBackServerSocket()->disconnect();
  }

  void startBoth() {
    sendStep(kRecorderGreeting);
    manager_->initialisePlayBackServerOnPortNumberWithPlayBackResponse(kPlaybackPort,
                                                                       kPlaybackGreeting);
  }
  void sendStep(const std::string& step) {
    manager_->initialiseRecorderServerOnPortNumberWithRecorderRequest(kRecorderPort, step);
  }

  LineLog& log_ = immortal<LineLog>();
  LoopMainQueue* mainQueue_ = nullptr;
  std::shared_ptr<ServerManager> manager_;
};

TEST_F(ServerManagerTest, ALateHostToolGetsTheLastStepAndThenEachNewOne) {
  startBoth();
  sendStep("[1]");
  sendStep("[\"\xc3\xa9\"]");
  const Wire recorder(kRecorderPort);
  EXPECT_EQ(recorder.read(16), "0000000006[\"\xc3\xa9\"]") << "the length counts bytes";
  sendStep("[3]");
  EXPECT_EQ(recorder.readMessage(), "[3]");
}

TEST_F(ServerManagerTest, AHostToolThatOnlyListensIsGreeted) {
  startBoth();
  for (const auto& [port, greeting] :
       {std::pair(kRecorderPort, kRecorderGreeting), std::pair(kPlaybackPort, kPlaybackGreeting)}) {
    std::promise<void> hasEnded;
    log_.holdAt("Accepted new socket", hasEnded.get_future().share());
    const Wire wire(port);
    wire.endSending();
    hasEnded.set_value();
    EXPECT_EQ(wire.readMessage(), greeting);
  }
}

TEST_F(ServerManagerTest, OfTwoHostToolsThatComeTogetherOneIsTurnedAway) {
  startBoth();
  std::promise<void> hasSecond;
  log_.holdAt("Accepted new socket", hasSecond.get_future().share());
  const Wire first(kPlaybackPort);
  const Wire second(kPlaybackPort);
  hasSecond.set_value();
  EXPECT_EQ(first.readMessage(), kPlaybackGreeting);
  EXPECT_TRUE(second.seesClose());
  first.send("{}\r\n");
  EXPECT_EQ(first.readMessage(), "[]");
}

// A child of the program that lives on as it is, with all that it inherits.
class ForkedChild {
 public:
  // The system's own call leaves out what libraries do when somebody forks.
  ForkedChild() : pid_(static_cast<pid_t>(syscall(SYS_fork))) {
    if (pid_ == 0) {
      for (;;) pause();
    }
  }
  ForkedChild(const ForkedChild&) = delete;
  ForkedChild& operator=(const ForkedChild&) = delete;
  ~ForkedChild() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }

 private:
  const pid_t pid_;
};

TEST_F(ServerManagerTest, AChildThatLivesOnHoldsNeitherPortNorConnection) {
  startBoth();
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  const ForkedChild whileListening;
  Wire first(kPlaybackPort);
  first.readMessage();
  const ForkedChild whileConnected;
  first.send("{}\r\n");
  EXPECT_EQ(first.readMessage(), "[]");
  EXPECT_TRUE(recorder.seesClose());
  EXPECT_FALSE(Wire::accepts(kPlaybackPort));
  first.leave();
  const Wire second(kPlaybackPort);
  second.send("{}\r\n");
  EXPECT_EQ(second.readMessage(), "[]");
}

// For its life the process has no descriptor left.
class NoDescriptors {
 public:
  NoDescriptors() {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit few{256, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    for (int copy = dup(0); copy >= 0; copy = dup(0)) copies_.push_back(copy);
  }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;
  ~NoDescriptors() {
    for (const int copy : copies_) close(copy);
    setrlimit(RLIMIT_NOFILE, &before_);
  }

 private:
  rlimit before_{};
  std::vector<int> copies_;
};

TEST_F(ServerManagerTest, ThePlaybackPortComesBackWithoutDescriptors) {
  startBoth();
  auto player = std::make_unique<Wire>(kPlaybackPort);
  player->readMessage();
  for (int pauses = 1; pauses <= 3; ++pauses) {
    std::promise<void> isFull;
    log_.holdAt("run loop in", isFull.get_future().share());
    player = std::make_unique<Wire>();  // the one before leaves
    ASSERT_TRUE(log_.waitFor("run loop in", pauses));
    {
      const NoDescriptors none;
      isFull.set_value();
      ASSERT_TRUE(eventually([&] { return player->connect(kPlaybackPort); })) << pauses;
    }
    player->send("{}\r\n");
    EXPECT_EQ(player->readMessage(), "[]") << pauses;
  }
}

TEST_F(ServerManagerTest, StepsForAHostToolThatDoesNotReadDoNotPileUp) {
  startBoth();
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  const PendingWrites& pending = manager_->recorderServerSocket()->pendingWrites();
  const auto dropped = [&] {
    return std::ranges::count_if(log_.lines(), [](const std::string& line) {
      return line.starts_with("The host tool does not read");
    });
  };
  // For their number, and for their size: far more than the network between the two takes up.
  for (const auto& [count, size] : {std::pair(1200L, 24UL << 10), std::pair(40L, 4UL << 20)}) {
    const long before = dropped();
    for (long sent = 0; sent < count; ++sent) {
      sendStep(std::string(size, 's'));
      EXPECT_LE(pending.bytes, 72UL * 1024 * 1024);
      EXPECT_LE(pending.messages, 256U);
    }
    EXPECT_GT(dropped(), before) << size;
    for (long left = count - (dropped() - before); left > 0; --left) {
      EXPECT_EQ(recorder.readMessage().size(), size);
    }
  }
  sendStep("[\"again\"]");
  EXPECT_EQ(recorder.readMessage(), "[\"again\"]");
}

TEST_F(ServerManagerTest, ATakenRecorderPortIsTriedAgainAndATakenPlaybackPortIsNot) {
  const auto delegate = std::make_shared<GCDAsyncSocketDelegate>();
  auto other4 = std::make_shared<GCDAsyncSocket>(
      delegate, platform::current().dispatch->makeSerialQueue("other"));
  auto other8 = std::make_shared<GCDAsyncSocket>(
      delegate, platform::current().dispatch->makeSerialQueue("other"));
  ASSERT_TRUE(other4->acceptOnPortError(kRecorderPort, nullptr));
  ASSERT_TRUE(other8->acceptOnPortError(kPlaybackPort, nullptr));
  startBoth();
  EXPECT_FALSE(manager_->isRecorderRunning());
  EXPECT_TRUE(manager_->isPlaybackRunning());
  EXPECT_THAT(log_.lines(), Contains(StartsWith("Error starting server: ")));
  EXPECT_THAT(log_.lines(), Contains(StartsWith("1 Error starting server: ")));
  EXPECT_THAT(log_.lines(), Contains(StartsWith("Playback server started on port ")));
  other4.reset();
  other8.reset();
  sendStep("[2]");
  EXPECT_TRUE(manager_->isRecorderRunning());
  EXPECT_EQ(Wire(kRecorderPort).readMessage(), "[2]");
  EXPECT_FALSE(Wire::accepts(kPlaybackPort));
}

TEST_F(ServerManagerTest, AReadThatTimesOutAsksTheHostToolForHalfAMinuteAtMost) {
  startBoth();
  const Wire player(kPlaybackPort);
  player.readMessage();
  const GCDAsyncSocketRef sock = manager_->playBackServerSocket();
  EXPECT_EQ(manager_->socketShouldTimeoutReadWithTagElapsedBytesDone(sock, 0, 15.0, 0), 10.0);
  EXPECT_EQ(player.read(22), "Are you still there?\r\n");
  EXPECT_EQ(manager_->socketShouldTimeoutReadWithTagElapsedBytesDone(sock, 0, 15.1, 0), 0.0);
}

}  // namespace
}  // namespace tarni::test
