#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <optional>

#include "tests/support/Display.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct Point {
  int x = 0;
  int y = 0;
};

// One program under test, the class of its windows, and a button that every one of its users sees.
struct Subject {
  std::string name;
  std::string command;
  std::string windowClass;
  std::string button;
};

void PrintTo(const Subject& subject, std::ostream* output) {
  *output << subject.name;
}

class Programs : public testing::TestWithParam<Subject> {
 protected:
  void SetUp() override {
    home_ = std::filesystem::temp_directory_path() / ("tarni-home-" + std::to_string(getpid()));
    std::filesystem::create_directories(home_);
  }
  void TearDown() override { std::filesystem::remove_all(home_); }

  Program::Environment environment() const {
    Program::Environment all = display_.environment();
    all["HOME"] = home_;
    all["XDG_RUNTIME_DIR"] = home_;
    all["TMPDIR"] = home_;
    all["XDG_CONFIG_HOME"] = all["XDG_DATA_HOME"] = all["XDG_CACHE_HOME"] = "";
    return all;
  }

  std::unique_ptr<Program> start() const {
    return std::make_unique<Program>(
        std::vector<std::string>{built("bin/tarni"), "run", "--", GetParam().command},
        environment());
  }

  // The middle of the element that shows `text`, in the coordinates of its window; null until a
  // finger would reach it there.
  static std::optional<Point> middleOf(const Playback& playback, const std::string& text) {
    for (const auto& element :
         playback.ask({{"functionname", "ai_findelements"}, {"tagname", ""}})) {
      if (element["text"] != text || element["isProbablyTappable"] != "true") continue;
      const auto value = [&](const char* key) {
        return std::stod(element["rectangle"][key].get<std::string>());
      };
      return Point{static_cast<int>(value("x") + value("width") / 2),
                   static_cast<int>(value("y") + value("height") / 2)};
    }
    return std::nullopt;
  }

  Point windowOrigin() const {
    const std::string geometry = run({"xdotool", "search", "--sync", "--onlyvisible", "--class",
                                      GetParam().windowClass, "getwindowgeometry", "--shell"},
                                     environment());
    const auto value = [&](const std::string& key) {
      return std::stoi(geometry.substr(geometry.find(key) + key.size()));
    };
    return {value("\nX="), value("\nY=")};
  }

  Display display_;
  std::filesystem::path home_;
};

INSTANTIATE_TEST_SUITE_P(
    On, Programs,
    testing::Values(Subject{"keepassxc", "keepassxc", "KeePassXC", "Create new database"},
                    Subject{"cutemaze", "/usr/games/cutemaze", "CuteMaze", "Help"}),
    [](const auto& info) { return info.param.name; });

TEST_P(Programs, ButtonsAreFoundByTextAndPressed) {
  const auto program = start();
  const Playback playback;
  std::vector<std::string> found;
  ASSERT_TRUE(eventually([&] {
    found = playback.find("", "text", GetParam().button);
    return found.size() == 1;
  })) << program->output();
  EXPECT_EQ(playback.output("gettext", found[0]), GetParam().button);
  const std::size_t before = playback.find("").size();
  const std::string button = playback.one("", "text", GetParam().button);
  EXPECT_EQ(playback.command("clickelement", button), nlohmann::json::array());
  EXPECT_TRUE(eventually([&] {
    const std::size_t now = playback.find("").size();
    return now > 0 && now != before;
  })) << "the key window is the same as before";
}

TEST_P(Programs, ARealClickBecomesAStep) {
  std::optional<Point> inWindow;
  {
    const auto program = start();
    const Playback playback;
    ASSERT_TRUE(eventually([&] {
      inWindow = middleOf(playback, GetParam().button);
      return inWindow.has_value();
    }));
  }
  const auto program = start();
  const Wire recorder(kRecorderPort);
  EXPECT_EQ(recorder.readMessage(), "Welcome! RecorderServer StartedSuccessfully ");
  // A view that has just appeared has no identity yet, and a tap on it makes no step. So the hand
  // closes what its last tap opened, gives the agent a moment, and taps again until a step comes.
  std::string step;
  const auto stepComes = [&](milliseconds timeout) {
    try {
      step = recorder.readMessage(timeout);
    } catch (const std::exception&) {
    }
    return !step.empty();
  };
  for (int attempt = 0; attempt < 10 && !stepComes(milliseconds(400)); ++attempt) {
    const Point origin = windowOrigin();
    display_.click(origin.x + inWindow->x, origin.y + inWindow->y);
    if (stepComes(milliseconds(1500))) break;
    display_.key("Escape");
  }
  ASSERT_FALSE(step.empty()) << program->output();
  const nlohmann::json steps = nlohmann::json::parse(step);
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0]["action"], "ClickButton");
  EXPECT_EQ(steps[0]["arguments"][0]["sahiText"], GetParam().button);
  EXPECT_EQ(steps[0]["arguments"][0]["ObjectImage"].get<std::string>().substr(0, 4), "/9j/");
  EXPECT_TRUE(program->isRunning());
}

}  // namespace
}  // namespace tarni::test
