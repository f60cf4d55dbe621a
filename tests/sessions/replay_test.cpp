// The kept sessions on the programs that they were recorded with, and recording them once more.
#include <gmock/gmock.h>
#include <signal.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

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
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct Point {
  int x;
  int y;
};

std::string kept(const char* name) {
  return std::string(TARNI_SESSIONS) + "/" + name;
}

class Replays : public testing::TestWithParam<const char*> {
 protected:
  std::string program() const { return built("bin/" + std::string(GetParam())); }

  std::unique_ptr<Program> start() const {
    return std::make_unique<Program>(
        std::vector<std::string>{built("bin/tarni"), "run", "--", program()},
        display_.environment());
  }

  std::unique_ptr<Program> play(const std::string& session,
                                const std::vector<std::string>& options) const {
    std::vector<std::string> command = {built("bin/tarni"), "play", session};
    command.insert(command.end(), options.begin(), options.end());
    return std::make_unique<Program>(command, display_.environment());
  }

  // Where a finger would press each element of a class, in the order of the view tree.
  // Of those that show the text; of all without one.
  static std::vector<Point> middlesOf(const Playback& playback, const std::string& tag,
                                      const std::string& text = "") {
    std::vector<Point> middles;
    for (const auto& element :
         playback.ask({{"functionname", "ai_findelements"}, {"tagname", tag}})) {
      if (element["isVisibleInViewHierarchy"] != "true") continue;
      if (!text.empty() && element["text"] != text) continue;
      const auto value = [&element](const char* key) {
        return std::stod(element["rectangle"][key].get<std::string>());
      };
      middles.push_back({static_cast<int>(value("x") + std::min(value("width") / 2, 12.0)),
                         static_cast<int>(value("y") + value("height") / 2)});
    }
    return middles;
  }

  // None while the file is being written.
  static std::vector<host::StreamStep> stepsIn(const std::filesystem::path& session) {
    try {
      return host::readStreamSession(session).steps;
    } catch (const std::exception&) {
      return {};
    }
  }

  static std::string lastIn(const std::filesystem::path& session) {
    const auto steps = stepsIn(session);
    return steps.empty() ? "" : steps.back().text;
  }

  // A tap counts once the window's views are known to the agent: until then it leaves no trace.
  bool tapUntilRecorded(const Point& point, const std::filesystem::path& session) const {
    return eventually(
        [&] {
          display_.click(point.x, point.y);
          return eventually([&] { return !stepsIn(session).empty(); }, 2s);
        },
        30s);
  }

  // What the login changes in the program, read from it as it stands.
  static void expectLoggedIn(const Playback& playback) {
    EXPECT_EQ(playback.find("UILabel", "text", "Hello, maria").size(), 1U);
    EXPECT_EQ(playback.find("UILabel", "text", "Accepted").size(), 1U);
    EXPECT_EQ(playback.output("isselected", playback.one("UISwitch")), "true");
  }

  const Display display_{800, 600};
  const Folder folder_;
};

INSTANTIATE_TEST_SUITE_P(On, Replays, testing::Values("qt-sample-5", "qt-sample-6"),
                         [](const auto& info) {
                           return std::string(info.param).substr(3, 6) +
                                  std::string(info.param).back();
                         });

TEST_P(Replays, DoAgainWhatAPersonDid) {
  const auto running = start();
  ASSERT_TRUE(eventually([] { return Wire::accepts(kPlaybackPort); })) << running->output();
  // Looking took the connection: the port comes back after a second.
  const auto player = play(kept("qt-sample.json"), {"--attach-running", "--report", folder_.path});
  EXPECT_EQ(player->wait(60s), 0) << player->output();
  EXPECT_THAT(player->output(), AllOf(HasSubstr("9 of 9 steps passed"), HasSubstr("by position"),
                                      Not(HasSubstr("by class and index"))));
  expectLoggedIn(Playback(false));
  const std::string page = contents(folder_.path / "index.html");
  std::size_t outlines = 0;
  for (auto at = page.find("<svg"); at != page.npos; at = page.find("<svg", at + 1)) ++outlines;
  EXPECT_EQ(outlines, 9U);
  EXPECT_THAT(page, AllOf(HasSubstr("9 of 9"), HasSubstr("switch on UISwitch")));
}

// A list, fields, a popup and a page of a program of Qt Quick.
class QuickReplays : public Replays {};

INSTANTIATE_TEST_SUITE_P(On, QuickReplays, testing::Values("quick-sample-5", "quick-sample-6"),
                         [](const auto& info) {
                           return "Quick" + std::string(1, std::string(info.param).back());
                         });

TEST_P(QuickReplays, DoAgainWhatAPersonDid) {
  const auto running = start();
  ASSERT_TRUE(eventually([] { return Wire::accepts(kPlaybackPort); })) << running->output();
  const auto player =
      play(kept("quick-sample.json"), {"--attach-running", "--report", folder_.path});
  EXPECT_EQ(player->wait(60s), 0) << player->output();
  EXPECT_THAT(player->output(),
              AllOf(HasSubstr("10 of 10 steps passed"), Not(HasSubstr("by class and index"))));
  const Playback playback(false);
  EXPECT_TRUE(eventually([&] { return playback.find("UILabel", "text", "Settings").size() == 1; }));
  playback.command("clickelement", playback.one("UIButton", "text", "Back"));
  ASSERT_TRUE(eventually([&] { return playback.find("UISwitch").size() == 1; }));
  expectLoggedIn(playback);
}

TEST_P(Replays, OfAFreshRecordingEqualTheKeptOne) {
  std::vector<Point> fields;
  std::vector<Point> switches;
  std::vector<Point> rows;
  std::vector<Point> buttons;
  {
    const auto scout = start();
    const Playback playback;
    ASSERT_TRUE(eventually([&] { return !middlesOf(playback, "UITextField").empty(); }));
    fields = middlesOf(playback, "UITextField");
    switches = middlesOf(playback, "UISwitch");
    rows = middlesOf(playback, "UITableViewCell");
    buttons = middlesOf(playback, "UIButton");
    ASSERT_GE(buttons.size(), 2U);
  }
  const auto file = folder_.path / "fresh.json";
  {
    const auto running = start();
    Program recorder(
        {built("bin/tarni"), "--connect-timeout", "20", "--port", "9892", "record", "-o", file});
    const auto steps = [&file] { return stepsIn(file).size(); };
    ASSERT_TRUE(eventually([&file] { return std::filesystem::exists(file); }));
    ASSERT_TRUE(tapUntilRecorded(fields[0], file)) << running->output() << recorder.output();
    display_.type("maria");
    display_.click(fields[1].x, fields[1].y);
    ASSERT_TRUE(eventually([&] { return steps() >= 3; })) << recorder.output();
    display_.type("s3cret");
    display_.click(switches[0].x, switches[0].y);
    ASSERT_TRUE(eventually([&] { return steps() >= 5; })) << recorder.output();
    display_.click(buttons[buttons.size() - 2].x, buttons[buttons.size() - 2].y);
    ASSERT_TRUE(eventually([&] { return steps() >= 6; })) << recorder.output();
    display_.click(rows[3].x, rows[3].y);
    ASSERT_TRUE(eventually([&] { return steps() >= 7; })) << recorder.output();
    recorder.signal(SIGINT);
    EXPECT_EQ(recorder.wait(10s), 0);
  }
  // Key by key but for what depends on the toolkit's looks: the pictures and the sizes.
  const auto comparable = [](const std::filesystem::path& path) {
    std::ifstream stream(path);
    auto steps = json::parse(stream)["steps"];
    for (auto& entry : steps) {
      for (auto& argument : entry["step"]["arguments"]) {
        for (const auto* key : {"ObjectImage", "width", "height"}) {
          argument.erase(key);
          if (argument.contains("parent")) argument["parent"].erase(key);
        }
      }
      entry = entry["step"];
    }
    steps.erase(steps.begin() + 7, steps.end());
    return steps;
  };
  EXPECT_EQ(comparable(file).dump(1), comparable(kept("qt-sample.json")).dump(1));
}

TEST_P(Replays, KeepTheTapThatEndsTheProgram) {
  std::vector<Point> entries;
  Point file{};
  Point field{};
  {
    const auto scout = start();
    const Playback playback;
    ASSERT_TRUE(eventually([&] { return !playback.find("", "text", "File").empty(); }));
    file = middlesOf(playback, "UIActionButton").front();
    field = middlesOf(playback, "UITextField").front();
    playback.command("clickelement", playback.one("", "text", "File"));
    ASSERT_TRUE(eventually([&] { return !playback.find("", "text", "Quit").empty(); }));
    // The menu bar's entries are there as well, for a finger beside the menu.
    entries = middlesOf(playback, "UIActionButton", "Quit");
  }
  const auto session = folder_.path / "quit.json";
  const auto running = start();
  Program recorder(
      {built("bin/tarni"), "--connect-timeout", "20", "--port", "9892", "record", "-o", session});
  ASSERT_TRUE(eventually([&session] { return std::filesystem::exists(session); }));
  const auto told = folder_.path / "told.json";
  Program channelRecorder({built("bin/tarni"), "record", "-o", told}, display_.environment());
  ASSERT_TRUE(eventually([&told] { return std::filesystem::exists(told); }));
  // A field first: the menu, opened too early, would be all that the agent looks at.
  ASSERT_TRUE(tapUntilRecorded(field, session)) << running->output() << recorder.output();
  display_.click(file.x, file.y);
  ASSERT_TRUE(eventually([&] { return lastIn(session) == "File"; })) << recorder.output();
  // The menu opens below the word that it belongs to.
  display_.click(entries.back().x, 2 * file.y + entries.back().y);
  EXPECT_EQ(recorder.wait(10s), 0);
  EXPECT_EQ(running->wait(10s), 0);
  EXPECT_EQ(lastIn(session), "Quit");
  EXPECT_EQ(channelRecorder.wait(10s), 0);
  const auto steps = host::Session::fromLines(host::readSessionLines(told)).steps();
  ASSERT_FALSE(steps.empty()) << channelRecorder.output();
  EXPECT_EQ(steps.back().inWords(), "menu File > Quit");
}

// A program that nobody here wrote, in a home that nobody has lived in.
struct RealSession {
  const char* name;
  const char* file;  // as it was recorded with a real hand
  const char* says;
  std::vector<std::string> options = {};
};

class ReplaysOfPrograms : public testing::TestWithParam<RealSession> {
 protected:
  Program::Environment environment() const {
    auto environment = display_.environment();
    for (const auto* name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR"}) environment[name] = home_.path;
    for (const auto* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
      environment[name] = "";
    }
    environment["LC_ALL"] = environment["LANGUAGE"] = "C.UTF-8";
    environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent";
    return environment;
  }

  const Display display_;
  const Folder home_;
};

// What Linguist translates.
constexpr auto kTexts = R"(<!DOCTYPE TS><TS version="2.1" language="de_DE">
<context><name>Main</name><message><source>Open</source><translation type="unfinished"/></message>
<message><source>Close</source><translation type="unfinished"/></message></context>
<context><name>Other</name><message><source>Quit</source><translation type="unfinished"/></message>
</context></TS>)";

INSTANTIATE_TEST_SUITE_P(
    Of, ReplaysOfPrograms,
    testing::Values(
        // A wizard with pages, hidden fields and a file dialog with a loop of its own.
        RealSession{"StreamOfKeePassXC", "keepassxc.json", "15 of 15 steps passed"},
        RealSession{"KeePassXC",
                    "keepassxc-all-kinds.json",
                    "66 of 66 steps passed",
                    {"--secret", "passwordEdit=s3cret"}},
        RealSession{"Kate", "kate-by-hand.json", "17 of 17 steps passed"},
        RealSession{"Linguist",
                    "linguist-by-hand.json",
                    "28 of 28 steps passed",
                    {"--program", "/usr/lib/qt6/bin/linguist x.ts"}}),
    [](const auto& info) { return info.param.name; });

TEST_P(ReplaysOfPrograms, DoAgainWhatAHandDid) {
  const auto& session = GetParam();
  std::ofstream(home_.path / "x.ts") << kTexts;
  std::vector<std::string> command = {"env",  "-C",      home_.path,        built("bin/tarni"),
                                      "play", "--trust", kept(session.file)};
  command.insert(command.end(), session.options.begin(), session.options.end());
  Program player(command, environment());
  EXPECT_EQ(player.wait(100s), 0) << player.output();
  EXPECT_THAT(player.output(), HasSubstr(session.says));
  const bool hasDatabase = std::filesystem::exists(home_.path / "family.kdbx");
  EXPECT_EQ(hasDatabase, std::string(session.file).starts_with("keepassxc"));
}

}  // namespace
}  // namespace tarni::test
