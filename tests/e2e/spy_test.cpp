// A person points at what a real program shows, on either window system, and types numbers into
// `tarni spy`.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>

#include "tests/support/Desktop.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using std::chrono::seconds;
using testing::HasSubstr;

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

struct Place {
  std::string name;
  std::string program;
  int scaleOnWayland = 0;  // 0 on X
};

void PrintTo(const Place& place, std::ostream* output) {
  *output << place.name;
}

class Spying : public testing::TestWithParam<Place> {
 protected:
  Spying() {
    Program::Environment environment = desktop_->environment();
    environment["TARNI_LOG"] = "stderr";
    program_ =
        std::make_unique<Program>(std::vector<std::string>{built("bin/tarni"), "run", "--",
                                                           built("bin/" + GetParam().program)},
                                  environment);
  }
  void SetUp() override {
    ASSERT_TRUE(eventually([&] { return occurrences(program_->output(), "ready:") == 1; }));
    ASSERT_TRUE(eventually([&] {
      const auto called = desktop_->windows("Tarni Sample");
      if (!called.empty()) window_ = called.front();
      return !called.empty();
    }));
  }
  // Points of the sample's window.
  void click(int x, int y) const {
    desktop_->click(static_cast<int>(window_.x) + x, static_cast<int>(window_.y) + y);
  }
  std::string colorAt(int x, int y) const {
    return desktop_->colorAt(static_cast<int>(window_.x) + x, static_cast<int>(window_.y) + y);
  }
  // True when the frame of the outermost element comes, and goes again.
  bool frameShows() const {
    const auto isFramed = [this] { return colorAt(1, 230) == "#00FF00"; };
    return eventually(isFramed) && eventually([&] { return !isFramed(); });
  }

  const std::unique_ptr<const Desktop> desktop_ = Desktop::make(GetParam().scaleOnWayland);
  std::unique_ptr<Program> program_;

 private:
  Desktop::Window window_;
};

INSTANTIATE_TEST_SUITE_P(On, Spying,
                         testing::Values(Place{"Qt5", "qt-sample-5"}, Place{"Qt6", "qt-sample-6"},
                                         Place{"Qt5Wayland", "qt-sample-5", 2},
                                         Place{"Qt6Wayland", "qt-sample-6", 1}),
                         [](const auto& info) { return info.param.name; });

TEST_P(Spying, TenNumbersInARowAreShownAndSpyingEnds) {
  const Folder folder;
  const std::string typing = folder.path / "typing";
  mkfifo(typing.c_str(), 0600);
  Program spy({"sh", "-c", "exec \"$0\" spy < " + typing, built("bin/tarni")});
  std::ofstream numbers(typing);
  ASSERT_TRUE(eventually([&] { return occurrences(program_->output(), "Switching to spy") == 1; }));

  for (std::size_t picks = 1; picks <= 5; ++picks) {
    click(200, 200);
    ASSERT_TRUE(eventually([&] { return occurrences(spy.output(), "  2  ") == picks; }))
        << spy.output() << program_->output();
  }
  for (int typed = 1; typed <= 10; ++typed) {
    numbers << 2 << std::endl;
    EXPECT_TRUE(frameShows()) << typed;
  }
  numbers << 2 << std::endl;
  EXPECT_TRUE(eventually([&] { return occurrences(spy.output(), "not shown") == 1; }));
  spy.signal(SIGINT);
  EXPECT_EQ(spy.wait(seconds(10)), 0);
  EXPECT_TRUE(
      eventually([&] { return occurrences(program_->output(), "Switching to recorder") == 1; }));
}

// The toast of the mode stands at the lower edge of the window, above the button.
TEST_P(Spying, PicksWhatIsBelowTheToast) {
  const auto color = [&] { return colorAt(134, 402); };
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  const auto before = color();
  recorder.sendLine("startobjectspy");
  ASSERT_TRUE(eventually([&] { return color() != before; })) << program_->output();
  click(134, 402);
  EXPECT_EQ(nlohmann::json::parse(recorder.readMessage(seconds(4)))[0]["tagName"], "UIButton");
}

}  // namespace
}  // namespace tarni::test
