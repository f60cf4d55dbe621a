// Pages in real programs, in a real engine, with a real hand.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "host/session/Session.h"
#include "host/stream/StreamSession.h"
#include "tests/support/Display.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::string page(const char* name) {
  return built(std::string("share/tarni/pages/") + name);
}

// `Click A "Terms" ""`
std::string lineOf(const ordered_json& step) {
  const auto& object = step["arguments"][0];
  return step["action"].get<std::string>() + " " + object["className"].get<std::string>() + " \"" +
         object["sahiText"].get<std::string>() + "\" " + step["arguments"][1]["data"].dump();
}

// The processes of the engine below `pid` in which pages run.
void killRenderersOf(pid_t pid) {
  std::istringstream children(
      run({"sh", "-c", "cat /proc/" + std::to_string(pid) + "/task/*/children || true"}));
  for (pid_t child = 0; children >> child;) {
    const std::string command = contents("/proc/" + std::to_string(child) + "/cmdline");
    if (command.find("--type=renderer") != std::string::npos) kill(child, SIGKILL);
    killRenderersOf(child);
  }
}

// Takes connections and never says a word.
class SilentServer {
 public:
  SilentServer() {
    sockaddr_in any = {};
    any.sin_family = AF_INET;
    any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof any;
    auto* const place = reinterpret_cast<sockaddr*>(&any);
    if (bind(listening_, place, size) < 0 || listen(listening_, 100) < 0 ||
        getsockname(listening_, place, &size) < 0) {
      throw std::runtime_error("no silent server");
    }
    address_ = "http://127.0.0.1:" + std::to_string(ntohs(any.sin_port));
  }
  SilentServer(const SilentServer&) = delete;
  ~SilentServer() { close(listening_); }

  const std::string& address() const { return address_; }

 private:
  const int listening_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::string address_;
};

class Sample : public testing::TestWithParam<const char*> {
 protected:
  Program::Environment environment() const {
    Program::Environment all = display_.environment();
    all["HOME"] = all["XDG_RUNTIME_DIR"] = folder_.path;
    all["QT_QUICK_BACKEND"] = "software";
    all["QTWEBENGINE_DISABLE_SANDBOX"] = "1";
    return all;
  }
  std::unique_ptr<Program> start(std::vector<std::string> command) const {
    command.insert(command.begin(), {built("bin/tarni"), "run", "--"});
    return std::make_unique<Program>(command, environment());
  }
  std::string written(const char* name, const std::string& contents) const {
    std::ofstream(folder_.path / name) << contents;
    return folder_.path / name;
  }
  std::string sample() const { return built("bin/" + std::string(GetParam())); }
  std::unique_ptr<Program> startSample(const std::string& shown) const {
    return start({sample(), shown});
  }

  // Reads steps into `steps_` until there are so many.
  bool awaitSteps(const Wire& recorder, std::size_t count,
                  std::chrono::milliseconds timeout = kPatience) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (steps_.size() < count && std::chrono::steady_clock::now() < end) {
      try {
        for (const auto& step : ordered_json::parse(recorder.readMessage(500ms))) {
          steps_.push_back(step);
        }
      } catch (const std::exception&) {
      }
    }
    return steps_.size() >= count;
  }

  // Presses the logo until the page has its scripts.
  void awaitRecording(const Wire& recorder, const Program& program) {
    recorder.readMessage();
    const auto press = [&] {
      display_.click(175, 272);
      return awaitSteps(recorder, 1, 2s);
    };
    ASSERT_TRUE(eventually(press, 30s)) << program.output();
    while (awaitSteps(recorder, steps_.size() + 1, 2s)) {
    }
    steps_.clear();
  }

  const Display display_{1000, 800};
  const Folder folder_;
  std::vector<ordered_json> steps_;
};

INSTANTIATE_TEST_SUITE_P(On, Sample, testing::Values("web-sample-5", "web-sample-6"),
                         [](const auto& info) {
                           return std::string("Qt") + std::string(info.param).back();
                         });

TEST_P(Sample, NativeControlsAndPagesMakeOneSession) {
  const auto session = (folder_.path / "session.json").string();
  {
    const auto program = startSample(page("form.html"));
    const Wire recorder(kRecorderPort);
    awaitRecording(recorder, *program);
    display_.click(100, 22);
    EXPECT_TRUE(awaitSteps(recorder, 1));
    display_.type("4711");
    display_.click(180, 69);
    EXPECT_TRUE(awaitSteps(recorder, 3));
    display_.type("Ada");
    display_.click(77, 171);
    EXPECT_TRUE(awaitSteps(recorder, 5));
    display_.click(295, 322);
    EXPECT_TRUE(awaitSteps(recorder, 6));
    display_.click(90, 274);
    EXPECT_TRUE(awaitSteps(recorder, 7));
    display_.click(700, 597);
    EXPECT_TRUE(awaitSteps(recorder, 8));
    display_.click(208, 274);
    EXPECT_TRUE(awaitSteps(recorder, 9)) << program->output();
  }
  std::vector<std::string> lines;
  host::StreamSessionWriter writer(session, {sample(), page("form.html")});
  for (const auto& step : steps_) {
    lines.push_back(lineOf(step));
    writer.add(0, step);
    const std::string picture = step["arguments"][0]["ObjectImage"];
    EXPECT_THAT(picture, HasSubstr("/9j/")) << lines.back();
  }
  EXPECT_THAT(
      lines,
      ElementsAre("Click UITextField \"Order number\" \"\"",
                  "TypeTextOnEditBox UITextField \"Order number\" \"4711\"",
                  "Click INPUT \"Customer\" \"\"", "TypeTextOnEditBox INPUT \"Customer\" \"Ada\"",
                  "Mobile_SelectSwitch INPUT \"A gift\" \"\"", "ClickButton BUTTON \"More\" \"\"",
                  "ClickButton BUTTON \"Send order\" \"\"",
                  "ClickButton UIButton \"Close order\" \"\"", "Click A \"Terms\" \"\""));
  const auto report = (folder_.path / "report").string();
  Program player({built("bin/tarni"), "play", "--report", report, session}, environment());
  EXPECT_EQ(player.wait(60s), 0) << player.output();
  EXPECT_THAT(player.output(), HasSubstr("9 of 9 steps passed"));
}

// The sender goes its rounds meanwhile: the pauses are there for the tap to fall anywhere in them.
TEST_P(Sample, TextTypedInAPageGoesBeforeTheTapThatFollows) {
  const auto program = startSample(page("form.html"));
  const Wire recorder(kRecorderPort);
  awaitRecording(recorder, *program);
  for (int round = 0; round < 5; ++round) {
    steps_.clear();
    display_.click(180, 69);
    display_.type("A");
    std::this_thread::sleep_for(round * 200ms);
    display_.click(700, 597);
    ASSERT_TRUE(awaitSteps(recorder, 3)) << program->output();
    EXPECT_EQ(lineOf(steps_[0]), "Click INPUT \"Customer\" \"\"");
    EXPECT_EQ(steps_[1]["arguments"][1]["data"], std::string(1 + round, 'A'));
    EXPECT_EQ(lineOf(steps_[2]), "ClickButton UIButton \"Close order\" \"\"");
  }
}

TEST_P(Sample, TheChannelTellsOfThePageAndOfControlsInTheOrderOfTheActs) {
  const auto session = (folder_.path / "session.json").string();
  std::vector<std::string> words;
  const auto recorded = [&] {
    words.clear();
    try {
      const auto told = host::Session::fromLines(host::readSessionLines(session));
      for (const auto& step : told.steps()) words.push_back(step.inWords());
    } catch (const std::exception&) {
      // it is being written
    }
    return words.size();
  };
  {
    const auto program = startSample(page("form.html"));
    Playback().await("A", "text", "Terms");
    Program recorder({built("bin/tarni"), "record", "-o", session}, environment());
    ASSERT_TRUE(eventually([&] { return recorded() == 0 && std::filesystem::exists(session); }));
    display_.click(180, 69);
    display_.type("Ada");
    display_.click(100, 22);
    display_.type("4711");
    display_.click(295, 322);
    display_.click(700, 597);
    ASSERT_TRUE(eventually([&] { return recorded() == 6; })) << recorder.output();
    recorder.signal(SIGINT);
    EXPECT_EQ(recorder.wait(10s), 0);
  }
  EXPECT_THAT(words, ElementsAre("click INPUT \"Customer\"", "type INPUT \"Customer\" = Ada",
                                 "click UITextField \"Order number\"",
                                 "type UITextField \"Order number\" = 4711",
                                 "click BUTTON \"More\"", "click UIButton \"Close order\""));
  Program player({built("bin/tarni"), "play", session}, environment());
  EXPECT_EQ(player.wait(60s), 0) << player.output();
}

TEST_P(Sample, AViewThatIsAWindowOfItsOwnIsOneAllTheSame) {
  const std::string bare = built("bin/bare-page-" + std::string(1, sample().back()));
  const auto program = start({bare, page("form.html")});
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  ASSERT_TRUE(eventually([&] {
    display_.click(164, 232);
    return awaitSteps(recorder, 1, 2s);
  })) << program->output();
  EXPECT_EQ(lineOf(steps_[0]), "ClickImage IMG \"Logo\" \"\"");
  EXPECT_THAT(steps_[0]["arguments"][0]["ObjectImage"].get<std::string>(), HasSubstr("/9j/"));
  const Playback playback;
  EXPECT_THAT(playback.await("IMG", "text", "Logo"), testing::StartsWith("web-"));
  EXPECT_THAT(playback.find("UIWebView"), SizeIs(1));
}

TEST_P(Sample, AnAlertOfAPageIsClosedByTheNextCommand) {
  const auto program = startSample(page("form.html"));
  const Playback playback;
  const std::string button = playback.await("BUTTON", "text", "Ask");
  playback.command("clickelement", button);
  std::string ok;
  ASSERT_TRUE(eventually([&] {
    const auto found = playback.find("UIButton", "text", "OK");
    if (!found.empty()) ok = found[0];
    return !found.empty();
  })) << program->output();
  playback.command("clickelement", ok);
  EXPECT_THAT(playback.await("OUTPUT", "text", "alert closed"), testing::StartsWith("web-"));
}

TEST_P(Sample, APageThatHangsOrDiesHoldsNobody) {
  const auto program =
      startSample(written("hang.html", "<title>Busy</title><button onclick='while (true);'>Hang"));
  const Playback playback;
  const std::string hang = playback.await("BUTTON", "text", "Hang");
  const auto pressClose = [&] {
    playback.command("clickelement", playback.one("UIButton", "text", "Close order"));
    return playback.find("UILabel", "partialtext", "Closed").size() == 1;
  };
  playback.command("clickelement", hang);
  // One call may find out that the page does not answer; from then on it is left alone.
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(
      eventually([&] { return playback.find("UIButton", "text", "Close order").size() == 1; }));
  EXPECT_TRUE(pressClose());
  EXPECT_THAT(playback.find("BUTTON"), IsEmpty());
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);

  killRenderersOf(program->pid());
  EXPECT_TRUE(pressClose());
  EXPECT_TRUE(program->isRunning()) << program->output();
}

// The call that hangs is lost with the page: nobody waits for its answer for ever.
TEST_P(Sample, APageThatHangsOnItsWayToAnotherIsLeftBehind) {
  Program server({built("bin/tarni"), "scripts", "serve", "--folder", folder_.path});
  ASSERT_TRUE(eventually([&] { return server.output().ends_with('\n'); }));
  const std::string output = server.output();
  const std::string port = output.substr(output.rfind(':'), output.size() - 1 - output.rfind(':'));
  written("there.html", "<h1>There</h1>");
  written("here.html", "<button onclick=\"location = 'http://127.0.0.1" + port +
                           "/there.html'; while (true);\">Leave</button>");
  Program::Environment all = environment();
  all["QTWEBENGINE_CHROMIUM_FLAGS"] = "--site-per-process";
  const Program program(
      {built("bin/tarni"), "run", "--", sample(), "http://localhost" + port + "/here.html"}, all);
  const Playback playback;
  playback.command("clickelement", playback.await("BUTTON", "text", "Leave"));
  playback.find("BUTTON");
  EXPECT_THAT(playback.await("H1", "text", "There"), testing::StartsWith("web-"))
      << program.output();
}

TEST_P(Sample, APageThatNeverStopsLoadingHoldsNobody) {
  const SilentServer server;
  const auto program = startSample(server.address());
  const Playback playback;
  ASSERT_TRUE(eventually([&] { return playback.find("UIButton").size() == 1; }));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_THAT(playback.find("BUTTON"), IsEmpty());
  playback.command("clickelement", playback.one("UIButton", "text", "Close order"));
  EXPECT_THAT(playback.find("UILabel", "partialtext", "Closed"), SizeIs(1));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
}

// Of every kind: a policy of its own, a language of its own, a text of 10 MB, a frame out of reach.
TEST_P(Sample, OddPagesAreUsed) {
  const auto program = startSample(written("odd.html", R"(<!doctype html><meta charset="utf-8">
    <meta http-equiv="Content-Security-Policy" content="default-src 'none'; script-src 'unsafe-inline'">
    <script>
      for (const name of ['push', 'map', 'filter', 'forEach', 'indexOf', 'join', 'slice', 'some']) {
        Array.prototype[name] = () => { throw new Error(name); };
      }
      Array.prototype[Symbol.iterator] = () => { throw new Error('iterator'); };
      Array.prototype.toJSON = Object.prototype.toJSON = () => 'wrong';
      JSON.stringify = JSON.parse = () => 'wrong';
    </script>
    <iframe sandbox srcdoc="<button>Foreign</button>"></iframe>
    <input placeholder="Name"><svg width="9" height="9"><desc></desc></svg>
    <script>document.querySelector('desc').textContent = 'x'.repeat(10000000);</script>)"));
  const Playback playback;
  const std::string name = playback.await("INPUT", "text", "Name");
  playback.command("sendkeysonelement", name, "Ada");
  EXPECT_EQ(playback.output("gettext", name), "Ada");
  EXPECT_THAT(playback.find("BUTTON", "text", "Foreign"), IsEmpty());
  EXPECT_THAT(program->output(), HasSubstr("shows a page of another origin"));
  // On a busy machine the page may be slower than the agent is patient.
  std::string text;
  EXPECT_TRUE(eventually([&] {
    text = playback.output("gettext", playback.one("SVG")).value_or("");
    return !text.empty();
  }));
  EXPECT_EQ(text.size(), 10'000'000U);
  EXPECT_EQ(text.find_first_not_of('x'), std::string::npos);
}

TEST_P(Sample, ScriptsThatCannotBeReadLeaveNativeViewsAlone) {
  const SilentServer silent;
  const std::vector<std::string> addresses = {"http://127.0.0.1:9", silent.address(),
                                              "file:///no/such/folder", "nonsense"};
  for (const std::string& address : addresses) {
    Program::Environment all = environment();
    all["TARNI_SCRIPTS"] = address;
    const Program program({built("bin/tarni"), "run", "--", sample()}, all);
    const Playback playback;
    ASSERT_TRUE(eventually([&] { return playback.find("UIButton").size() == 1; })) << address;
    const auto end = std::chrono::steady_clock::now() + 8s;
    int answers = 0;
    for (; answers < 100 && std::chrono::steady_clock::now() < end; ++answers) {
      EXPECT_THAT(playback.find("BUTTON"), IsEmpty());
      pauseBetweenAttempts();
    }
    EXPECT_EQ(answers, 100) << address;
  }
}

// The hand points at the picture, presses the link and, spying ended, presses the picture.
TEST_P(Sample, SpyingFramesWhatIsPointedAtAndTellsOfWhatIsPressed) {
  constexpr const char* kGreen = "#00FF00";
  constexpr const char* kPictureColor = "#006633";
  const auto program = startSample(page("form.html"));
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  recorder.sendLine("startobjectspy");
  const auto frameColor = [&] { return display_.colorAt(167, 271); };
  ASSERT_TRUE(eventually(
      [&] {
        display_.moveTo(300, 400);
        display_.moveTo(175, 271);
        return eventually([&] { return frameColor() == kGreen; }, 500ms);
      },
      30s))
      << program->output();
  EXPECT_EQ(display_.colorAt(175, 271), kPictureColor);

  display_.click(208, 273);
  ASSERT_TRUE(awaitSteps(recorder, 3)) << program->output();
  std::vector<std::string> spied;
  for (const auto& object : steps_) {
    spied.push_back(object["tagName"]);
    EXPECT_EQ(object["mode"], "web");
  }
  EXPECT_THAT(spied, ElementsAre("A", "FORM", "BODY"));
  EXPECT_EQ(steps_[0]["sahiText"], "Terms");
  EXPECT_EQ(steps_[0]["xpath:position"], "//a[@href='next.html']");
  EXPECT_EQ(display_.colorAt(175, 271), kPictureColor) << "the link was not followed";

  recorder.sendLine("stopobjectspy");
  // A tap that comes before the page knows that spying has ended is spied, not recorded.
  ASSERT_TRUE(eventually([&] {
    steps_.clear();
    display_.click(175, 271);
    return awaitSteps(recorder, 1, 2s) && steps_[0].contains("action");
  })) << ordered_json(steps_)
      << program->output();
  EXPECT_EQ(lineOf(steps_[0]), "ClickImage IMG \"Logo\" \"\"");
  EXPECT_EQ(frameColor(), kPictureColor);
  EXPECT_THAT(program->output(), Not(HasSubstr("js: "))) << "the page's console is the program's";
}

}  // namespace
}  // namespace tarni::test
