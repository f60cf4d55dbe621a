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

#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"
#include "agent/TcpCommunication/BaseManager/ServerManager.h"
#include "agent/core/state/GlobalVars.h"
#include "backends/posix/Dispatch.h"
#include "backends/posix/EventRecord.h"
#include "backends/posix/ProcessInfo.h"
#include "backends/posix/TouchRecord.h"
#include "platform/Platform.h"
#include "tests/TcpCommunication/LoopbackClient.h"
#include "tests/posix/Immortal.h"
#include "tests/posix/LineLog.h"
#include "tests/posix/LoopMainQueue.h"

namespace tarni::test {
namespace {

using platform::CFRunLoopRunResult;
using platform::Task;
using testing::Contains;
using testing::IsSupersetOf;
using testing::StartsWith;

constexpr std::uint16_t kRecorderPort = ServerManager::kRecorderPort;
constexpr std::uint16_t kPlaybackPort = ServerManager::kPlaybackPort;
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

class LoggedAlerts : public platform::UIAlerts {
 public:
  explicit LoggedAlerts(LineLog& log) : log_(log) {}
  std::shared_ptr<platform::UIAlertView> show(std::string message, std::optional<std::string>,
                                              std::optional<std::string>) override {
    log_.write("alert " + message);
    return std::make_shared<Alert>();
  }

 private:
  struct Alert : platform::UIAlertView {
    void dismissWithClickedButtonIndex(long, bool) override {}
  };
  LineLog& log_;
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
    platform.alerts = &immortal<LoggedAlerts>(log_);
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
  // Everything that was on the main queue before is done.
  void settle() {
    mainQueue_->sync([] {});
  }

  LineLog& log_ = immortal<LineLog>();
  LoopMainQueue* mainQueue_ = nullptr;
  std::shared_ptr<ServerManager> manager_;
};

TEST_F(ServerManagerTest, TheHostToolIsGreetedInFrames) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  const LoopbackClient player(kPlaybackPort, AF_INET6);
  EXPECT_EQ(recorder.read(54), "0000000044" + kRecorderGreeting);
  EXPECT_EQ(player.read(68), "0000000058" + kPlaybackGreeting);
  EXPECT_THAT(log_.lines(),
              IsSupersetOf({"Recorded Steps " + kRecorderGreeting,
                            std::string("Recorder server started on port 9892"),
                            "0000000058" + kPlaybackGreeting, std::string("AcceptOnPort-1"),
                            std::string("Playback server started on port 9898"),
                            std::string("DidConnect to host"),
                            std::string("Accepted new socket from 127.0.0.1:9892"),
                            std::string("Accepted client 127.0.0.1:9892"),
                            std::string("Accepted client ::1:9898")}));
}

TEST_F(ServerManagerTest, ALateHostToolGetsTheLastStepAndThenEachNewOne) {
  startBoth();
  sendStep("[1]");
  sendStep("[\"\xc3\xa9\"]");
  const LoopbackClient recorder(kRecorderPort);
  EXPECT_EQ(recorder.read(16), "0000000006[\"\xc3\xa9\"]") << "the length counts bytes";
  sendStep("[3]");
  EXPECT_EQ(recorder.readMessage(), "[3]");
}

TEST_F(ServerManagerTest, EachServerHasOneHostToolAtATime) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  const LoopbackClient player(kPlaybackPort);
  recorder.readMessage();
  player.readMessage();
  EXPECT_FALSE(LoopbackClient::isListening(kRecorderPort));
  EXPECT_FALSE(LoopbackClient::isListening(kPlaybackPort));
}

TEST_F(ServerManagerTest, OfTwoHostToolsThatComeTogetherOneIsTurnedAway) {
  startBoth();
  std::promise<void> hasSecond;
  log_.holdAt("Accepted new socket", hasSecond.get_future().share());
  const LoopbackClient first(kPlaybackPort);
  const LoopbackClient second(kPlaybackPort);
  hasSecond.set_value();
  EXPECT_EQ(first.readMessage(), kPlaybackGreeting);
  EXPECT_TRUE(second.seesClose());
  first.send("{}\r\n");
  EXPECT_EQ(first.readMessage(), "[]");
}

TEST_F(ServerManagerTest, EveryCommandIsAnsweredInItsOrder) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  for (const char* command :
       {"no JSON at all\r\n", "{\"functionname\":\"unknown\"}\r\n", "\r\n", "[1,2]\r\n",
        "{\"functionname\":\"gettext\",\"accessorvalue\":\"nobody\"}\r\n", "\xff\xfe{}\r\n"}) {
    player.send(command);
    EXPECT_EQ(player.read(12), "0000000002[]") << command;
  }
  EXPECT_TRUE(manager_->IsPlaybackGetResponse());
  EXPECT_TRUE(GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted()));
  player.send("{\"functionname\":7}\r\n");
  EXPECT_THAT(player.readMessage(), StartsWith("[{\"exceptionmsg\":"));
}

TEST_F(ServerManagerTest, ACommandThatIsNotUTF8StartsPlaybackToo) {
  GlobalVars::sharedInstance().set_isPlaybackStarted(std::nullopt);
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  player.send("{\"functionname\":\"gettext\xff\"}\r\n");
  EXPECT_EQ(player.readMessage(), "[]");
  EXPECT_TRUE(GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted()));
  EXPECT_TRUE(log_.waitFor("is not UTF-8"));
}

TEST_F(ServerManagerTest, TwoCommandsInOneSegmentAreBothAnswered) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  player.send("{}\r\n");
  EXPECT_EQ(player.readMessage(), "[]");
  player.send("{}\r\n{}\r\n{}\r\n");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(player.readMessage(), "[]");
}

TEST_F(ServerManagerTest, ACommandMayArriveInPiecesOfAnySize) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  player.send("{}\r\n");
  EXPECT_EQ(player.readMessage(), "[]");
  const std::string large(3'000'000, 'x');
  player.send("{\"functionname\":\"unknown\",\"datavalue\":\"");
  player.send(large);
  player.send("\"}\r");
  player.send("\n");
  EXPECT_EQ(player.readMessage(), "[]");
}

TEST_F(ServerManagerTest, ALineThatIsTooLongIsNoCommand) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  player.send("{}\r\n");
  EXPECT_EQ(player.readMessage(), "[]");
  player.send("{\"functionname\":7}" + std::string(17UL * 1024 * 1024, ' ') + "\r\n");
  EXPECT_EQ(player.readMessage(), "[]") << "it would be answered with an exception";
  player.send("{\"functionname\":7}" + std::string(15UL * 1024 * 1024, ' ') + "\r\n");
  EXPECT_THAT(player.readMessage(), StartsWith("[{\"exceptionmsg\":"));
}

TEST_F(ServerManagerTest, TheFirstPlaybackCommandEndsRecordingForGood) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  const LoopbackClient player(kPlaybackPort);
  recorder.readMessage();
  player.readMessage();
  player.send("{}\r\n");
  EXPECT_TRUE(recorder.seesClose());
  player.readMessage();
  sendStep("[1]");
  EXPECT_FALSE(LoopbackClient::isListening(kRecorderPort));
  EXPECT_TRUE(manager_->isRecorderRunning());
}

TEST_F(ServerManagerTest, PlaybackAlsoClosesARecorderPortThatNobodyUsed) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  player.send("{}\r\n");
  player.readMessage();
  EXPECT_FALSE(LoopbackClient::isListening(kRecorderPort));
}

TEST_F(ServerManagerTest, ThePlaybackPortComesBackForOneUngreetedHostToolAfterTheOther) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  recorder.readMessage();
  {
    const LoopbackClient first(kPlaybackPort);
    EXPECT_EQ(first.readMessage(), kPlaybackGreeting);
  }
  EXPECT_TRUE(recorder.seesClose());
  for (int round = 0; round < 3; ++round) {
    const LoopbackClient next;
    ASSERT_TRUE(next.connectSoon(kPlaybackPort)) << round;
    next.send("{}\r\n");
    EXPECT_EQ(next.read(12), "0000000002[]") << round;
    EXPECT_FALSE(LoopbackClient::isListening(kPlaybackPort)) << round;
  }
  EXPECT_THAT(log_.lines(), IsSupersetOf({"Client Disconnected. Accepting port again-2",
                                          "run loop in kCFRunLoopDefaultMode for 1.000000"}));
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
  const LoopbackClient recorder(kRecorderPort);
  recorder.readMessage();
  const ForkedChild whileListening;
  LoopbackClient first(kPlaybackPort);
  first.readMessage();
  const ForkedChild whileConnected;
  first.send("{}\r\n");
  EXPECT_EQ(first.readMessage(), "[]");
  EXPECT_TRUE(recorder.seesClose());
  EXPECT_FALSE(LoopbackClient::isListening(kPlaybackPort));
  first.leave();
  const LoopbackClient second;
  ASSERT_TRUE(second.connectSoon(kPlaybackPort));
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
  auto player = std::make_unique<LoopbackClient>(kPlaybackPort);
  player->readMessage();
  for (int pauses = 1; pauses <= 3; ++pauses) {
    std::promise<void> isFull;
    log_.holdAt("run loop in", isFull.get_future().share());
    player = std::make_unique<LoopbackClient>();  // the one before leaves
    ASSERT_TRUE(log_.waitFor("run loop in", pauses));
    {
      const NoDescriptors none;
      isFull.set_value();
      ASSERT_TRUE(player->connectSoon(kPlaybackPort)) << pauses;
    }
    player->send("{}\r\n");
    EXPECT_EQ(player->readMessage(), "[]") << pauses;
  }
}

TEST_F(ServerManagerTest, AHostToolThatVanishesInTheMiddleOfACommandHarmsNothing) {
  startBoth();
  {
    LoopbackClient first(kPlaybackPort);
    first.readMessage();
    std::promise<void> hasLeft;
    mainQueue_->async([left = hasLeft.get_future().share()] { left.wait(); });
    first.send("{}\r\n");
    first.reset();
    hasLeft.set_value();
  }
  const LoopbackClient second;
  ASSERT_TRUE(second.connectSoon(kPlaybackPort));
  second.send("{}\r\n");
  EXPECT_EQ(second.readMessage(), "[]");
}

TEST_F(ServerManagerTest, TheGreetingSentBackIsNotAnswered) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  player.send("Welcome PlayBackServer Started Successfully");
  EXPECT_TRUE(log_.waitFor("Msg is Welcome PlayBackServer Started Successfully"));
  settle();
  player.send("{}\r\n");
  EXPECT_EQ(player.read(12), "0000000002[]") << "the first answer is that to the next command";
}

TEST_F(ServerManagerTest, SpyModeIsSwitchedByAnyTextThatNamesIt) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  recorder.readMessage();
  recorder.send("please STARTobjectSpy now\r\n");
  EXPECT_TRUE(log_.waitFor("alert Switched to Spy Mode"));
  EXPECT_TRUE(GlobalVars::isTrue(GlobalVars::sharedInstance()._spyMode()));
  recorder.send("stopobjectspy\r\n");
  EXPECT_TRUE(log_.waitFor("alert Switched to Recording Mode"));
  EXPECT_EQ(GlobalVars::sharedInstance()._spyMode(), "false");
  EXPECT_THAT(log_.lines(),
              IsSupersetOf({"Recorder thread message is 'please STARTobjectSpy now\r\n'",
                            "Switching to spy", "Switching to recorder"}));
}

TEST_F(ServerManagerTest, BadRecorderCommandsEndInTheLog) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  recorder.readMessage();
  const std::vector<std::pair<std::string, std::string>> commandsAndTraces{
      {"something else", "Error converting received data into UTF-8 String"},
      {"highlight", "without \"=\""},
      {"highlight=0", "elementIndexToHighlight '-1', and _viewSotrageSize '0' "},
      {"highlight= 3x", "elementIndexToHighlight '-4', and _viewSotrageSize '0' "},
      {"highlight=-99999999999", "elementIndexToHighlight '2147483647', and"},
      {"highlight=99999999999", "elementIndexToHighlight '-2147483648', and"},
      {"stopobjectspy", "alert Switched to Recording Mode"}};
  for (const auto& [command, trace] : commandsAndTraces) {
    sendStep("[]");
    EXPECT_EQ(recorder.readMessage(), "[]");
    recorder.send(command + "\r\n");
    EXPECT_TRUE(log_.waitFor(trace)) << command;
  }
}

TEST_F(ServerManagerTest, ARecorderCommandThatIsNotUTF8DoesNothing) {
  platform::spawn(RecorderCommands::handle("startobjectspy \xff\r\n"), {});
  EXPECT_TRUE(log_.lines().empty());
}

TEST_F(ServerManagerTest, StepsForAHostToolThatDoesNotReadDoNotPileUp) {
  startBoth();
  const LoopbackClient recorder(kRecorderPort);
  recorder.readMessage();
  const std::string step(4UL * 1024 * 1024, 's');
  const PendingWrites& pending = manager_->recorderServerSocket()->pendingWrites();
  for (int i = 0; i < 30; ++i) {
    sendStep(step);
    EXPECT_LE(pending.bytes, 72UL * 1024 * 1024);
  }
  const auto lines = log_.lines();
  const auto dropped = std::ranges::count_if(lines, [](const std::string& line) {
    return line.starts_with("The host tool does not read");
  });
  EXPECT_GT(dropped, 0);
  for (auto i = dropped; i < 30; ++i) ASSERT_EQ(recorder.readMessage().size(), step.size());
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
  EXPECT_EQ(LoopbackClient(kRecorderPort).readMessage(), "[2]");
  EXPECT_FALSE(LoopbackClient::isListening(kPlaybackPort));
}

TEST_F(ServerManagerTest, AReadThatTimesOutAsksTheHostToolForHalfAMinuteAtMost) {
  startBoth();
  const LoopbackClient player(kPlaybackPort);
  player.readMessage();
  const GCDAsyncSocketRef sock = manager_->playBackServerSocket();
  EXPECT_EQ(manager_->socketShouldTimeoutReadWithTagElapsedBytesDone(sock, 0, 15.0, 0), 10.0);
  EXPECT_EQ(player.read(22), "Are you still there?\r\n");
  EXPECT_EQ(manager_->socketShouldTimeoutReadWithTagElapsedBytesDone(sock, 0, 15.1, 0), 0.0);
}

}  // namespace
}  // namespace tarni::test
