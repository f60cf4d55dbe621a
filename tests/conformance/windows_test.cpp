// A window beside the key window: it is searched when that is asked for, and acting there makes it
// the key window.
#include <gmock/gmock.h>

#include "tests/conformance/Subject.h"
#include "tests/support/Compositor.h"

namespace tarni::test {
namespace {

struct TwoWindows {
  const char* name;
  const char* program;
  const char* opensTheSecond;  // the text of a button; null for a window that is there already
  const char* inTheFirst;      // the text of a button
  bool isOnWayland = false;
};

class ConformanceWindows : public testing::TestWithParam<TwoWindows> {
 protected:
  static std::unique_ptr<Compositor> compositor() {
    return GetParam().isOnWayland ? std::make_unique<Compositor>() : nullptr;
  }
  Program::Environment environment() const {
    Program::Environment environment = agentEnvironment();
    environment["QT_QUICK_BACKEND"] = "software";
    if (!compositor_) return environment;
    compositor_->addTo(environment);
    return environment;
  }
  std::string button(const std::string& text) const {
    const auto found = playback_.find("UIButton", "text", text, "any");
    return found.size() == 1 ? found.front() : "";
  }
  bool shows(const std::string& text) const {
    return !playback_.find("", "text", text, "any").empty();
  }
  // Of the window of that element; of the current one for none.
  std::vector<std::string> buttonsBeside(const std::string& element) const {
    std::vector<std::string> texts;
    for (const auto& described : playback_.ask(
             {{"functionname", "ai_findelements"}, {"tagname", "UIButton"}, {"window", element}})) {
      texts.push_back(described["text"]);
    }
    return texts;
  }

  const std::unique_ptr<Compositor> compositor_ = compositor();
  const Program program_{{built("bin/" + std::string(GetParam().program))}, environment()};
  const Playback playback_;
};

TEST_P(ConformanceWindows, BesideTheKeyWindowAreReachedAsWell) {
  const auto [name, program, opensTheSecond, inTheFirst, isOnWayland] = GetParam();
  if (opensTheSecond) playback_.command("clickelement", button(opensTheSecond));
  ASSERT_TRUE(eventually([&] { return shows("Press here"); }));
  const auto isInKeyWindow = [this](const char* text) {
    return !playback_.find("UIButton", "text", text).empty();
  };
  EXPECT_NE(isInKeyWindow("Press here"), isInKeyWindow(inTheFirst));
  // Whichever is the key window, the other one becomes it.
  playback_.command("clickelement", button(inTheFirst));
  EXPECT_THAT(buttonsBeside(""), testing::Contains(inTheFirst));
  EXPECT_THAT(buttonsBeside(button("Press here")), testing::Not(testing::Contains(inTheFirst)));
  playback_.command("clickelement", button("Press here"));
  // Where the button tells it by itself it may have done so by now.
  EXPECT_THAT(buttonsBeside(""), testing::Contains(testing::AnyOf("Press here", "again=1")));
  EXPECT_TRUE(eventually([&] { return shows("again=1"); }));
}

INSTANTIATE_TEST_SUITE_P(
    On, ConformanceWindows,
    testing::Values(TwoWindows{"Headless", "tarni-headless-page", nullptr, "Close order"},
                    TwoWindows{"Qt5", "qt-controls-5", "Window…", "Press"},
                    TwoWindows{"Qt6", "qt-controls-6", "Window…", "Press"},
                    TwoWindows{"Quick5", "quick-controls-5", "Window…", "Press"},
                    TwoWindows{"Quick6", "quick-controls-6", "Window…", "Press"},
                    TwoWindows{"Widgets5Wayland", "qt-controls-5", "Window…", "Press", true},
                    TwoWindows{"Widgets6Wayland", "qt-controls-6", "Window…", "Press", true},
                    TwoWindows{"Quick5Wayland", "quick-controls-5", "Window…", "Press", true},
                    TwoWindows{"Quick6Wayland", "quick-controls-6", "Window…", "Press", true},
                    TwoWindows{"iOS", "ios-page", nullptr, "Close order"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tarni::test
