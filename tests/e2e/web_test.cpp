// Pages in real programs, in a real engine, with a real hand.
#include <gmock/gmock.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "host/session/SessionFile.h"
#include "tests/support/Display.h"
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
    std::ifstream file("/proc/" + std::to_string(child) + "/cmdline");
    const std::string command((std::istreambuf_iterator<char>(file)), {});
    if (command.find("--type=renderer") != std::string::npos) kill(child, SIGKILL);
    killRenderersOf(child);
  }
}

class Pages : public testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directories(folder_); }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  Program::Environment environment() const {
    Program::Environment all = display_.environment();
    all["HOME"] = all["XDG_RUNTIME_DIR"] = folder_;
    all["QT_QUICK_BACKEND"] = "software";
    all["QTWEBENGINE_DISABLE_SANDBOX"] = "1";
    return all;
  }
  std::unique_ptr<Program> start(std::vector<std::string> command) const {
    command.insert(command.begin(), {built("bin/tarni"), "run", "--"});
    return std::make_unique<Program>(command, environment());
  }
  std::string written(const char* name, const std::string& contents) const {
    std::ofstream(folder_ / name) << contents;
    return folder_ / name;
  }
  // The element of the page, once it is there.
  static std::string await(const Playback& playback, const std::string& tag,
                           const std::string& text) {
    std::vector<std::string> found;
    const bool isThere = eventually([&] {
      found = playback.find(tag, "text", text);
      return found.size() == 1;
    });
    return isThere ? found[0] : "no " + tag + " " + text;
  }

  Display display_{1000, 800};
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / ("tarni-pages-" + std::to_string(getpid()));
};

class Sample : public Pages, public testing::WithParamInterface<const char*> {
 protected:
  std::string sample() const { return built("bin/" + std::string(GetParam())); }
  std::unique_ptr<Program> startSample(const std::string& shown) const {
    return start({sample(), shown});
  }

  // Reads steps into `steps_` until there are so many.
  bool awaitSteps(const Wire& recorder, std::size_t count,
                  std::chrono::milliseconds timeout = 10s) {
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

  std::vector<ordered_json> steps_;
};

INSTANTIATE_TEST_SUITE_P(On, Sample, testing::Values("web-sample-5", "web-sample-6"),
                         [](const auto& info) {
                           return std::string("Qt") + std::string(info.param).back();
                         });

TEST_P(Sample, NativeControlsAndPagesMakeOneSession) {
  const auto session = (folder_ / "session.json").string();
  {
    const auto program = startSample(page("form.html"));
    const Wire recorder(kRecorderPort);
    recorder.readMessage();
    // The logo, until the page has its scripts.
    const auto press = [&] {
      display_.click(175, 272);
      return awaitSteps(recorder, 1, 2s);
    };
    ASSERT_TRUE(eventually(press, 30s)) << program->output();
    while (awaitSteps(recorder, steps_.size() + 1, 2s)) {
    }
    steps_.clear();

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
  host::SessionWriter writer(session, {sample(), page("form.html")});
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
  const auto report = (folder_ / "report").string();
  Program player({built("bin/tarni"), "play", "--report", report, session}, environment());
  EXPECT_EQ(player.wait(60s), 0) << player.output();
  EXPECT_THAT(player.output(), HasSubstr("9 of 9 steps passed"));
}

TEST_P(Sample, AnAlertOfAPageIsClosedByTheNextCommand) {
  const auto program = startSample(page("form.html"));
  const Playback playback;
  const std::string button = await(playback, "BUTTON", "Ask");
  playback.command("clickelement", button);
  std::string ok;
  ASSERT_TRUE(eventually([&] {
    const auto found = playback.find("UIButton", "text", "OK");
    if (!found.empty()) ok = found[0];
    return !found.empty();
  })) << program->output();
  playback.command("clickelement", ok);
  EXPECT_THAT(await(playback, "OUTPUT", "alert closed"), testing::StartsWith("web-"));
}

TEST_P(Sample, APageThatHangsOrDiesHoldsNobody) {
  const auto program =
      startSample(written("hang.html", "<title>Busy</title><button onclick='while (true);'>Hang"));
  const Playback playback;
  const std::string hang = await(playback, "BUTTON", "Hang");
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

// In widgets and in Qt Quick.
class View : public Sample {};

INSTANTIATE_TEST_SUITE_P(On, View,
                         testing::Values("web-sample-5", "web-sample-6", "web-quick-sample-5",
                                         "web-quick-sample-6"),
                         [](const auto& info) {
                           const std::string name = info.param;
                           const bool isQuick = name.find("quick") != std::string::npos;
                           return (isQuick ? "Quick" : "Widgets") + std::string(1, name.back());
                         });

TEST_P(View, AnythingInAValueReachesThePageAsItWasSent) {
  const auto program = startSample(page("form.html"));
  const Playback playback;
  const std::string field = await(playback, "TEXTAREA", "Remarks");
  const std::string text = "'\"\\ \u2028 {} </script> 🦊 é\t" + std::string(1000, 'x');
  playback.command("sendkeysonelement", field, text);
  EXPECT_EQ(playback.output("gettext", field), text);
}

TEST_P(Sample, ScriptsThatCannotBeReadLeaveNativeViewsAlone) {
  Program::Environment all = environment();
  all["TARNI_SCRIPTS"] = "http://127.0.0.1:9";
  const Program program({built("bin/tarni"), "run", "--", sample()}, all);
  const Playback playback;
  EXPECT_TRUE(eventually([&] { return playback.find("UIButton").size() == 1; }));
  EXPECT_THAT(playback.find("BUTTON"), IsEmpty());
}

TEST_F(Pages, OfABrowserThatNobodyHereWroteAreUsed) {
  const auto program = start({"falkon", "--no-remote", "--private-browsing", page("tasks.html")});
  const Playback playback;
  const std::string field = await(playback, "INPUT", "New task");
  playback.command("sendkeysonelement", field, "Bread");
  playback.command("clickelement", await(playback, "BUTTON", "Add"));
  EXPECT_THAT(await(playback, "LI", "Bread, small"), testing::StartsWith("web-"))
      << program->output();
}

}  // namespace
}  // namespace tarni::test
