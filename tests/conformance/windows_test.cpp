// A window beside the key window: it is searched when that is asked for, and acting there makes it
// the key window.
#include <gmock/gmock.h>

#include <optional>

#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

class ConformanceWindows : public OfSubjects {
 protected:
  void SetUp() override {
    start();
    playback_.emplace();
  }
  std::string button(const std::string& text) const {
    const auto found = playback_->find("UIButton", "text", text, "any");
    return found.size() == 1 ? found.front() : "";
  }
  bool shows(const std::string& text) const {
    return !playback_->find("", "text", text, "any").empty();
  }
  // Of the window of that element; of the current one for none.
  std::vector<std::string> buttonsBeside(const std::string& element) const {
    std::vector<std::string> texts;
    for (const auto& described : playback_->ask(
             {{"functionname", "ai_findelements"}, {"tagname", "UIButton"}, {"window", element}})) {
      texts.push_back(described["text"]);
    }
    return texts;
  }

  std::optional<Playback> playback_;
};

TEST_P(ConformanceWindows, BesideTheKeyWindowAreReachedAsWell) {
  ASSERT_TRUE(eventually([&] { return shows("Window…") || shows("Press here"); }));
  const bool isThere = shows("Press here");
  const char* const inTheFirst = isThere ? "Close order" : "Press";
  if (!isThere) playback_->command("clickelement", button("Window…"));
  ASSERT_TRUE(eventually([&] { return shows("Press here"); }));
  const auto isInKeyWindow = [this](const char* text) {
    return !playback_->find("UIButton", "text", text).empty();
  };
  EXPECT_NE(isInKeyWindow("Press here"), isInKeyWindow(inTheFirst));
  // Whichever is the key window, the other one becomes it.
  playback_->command("clickelement", button(inTheFirst));
  EXPECT_THAT(buttonsBeside(""), testing::Contains(inTheFirst));
  EXPECT_THAT(buttonsBeside(button("Press here")), testing::Not(testing::Contains(inTheFirst)));
  playback_->command("clickelement", button("Press here"));
  // Where the button tells it by itself it may have done so by now.
  EXPECT_THAT(buttonsBeside(""), testing::Contains(testing::AnyOf("Press here", "again=1")));
  EXPECT_TRUE(eventually([&] { return shows("again=1"); }));
}

INSTANTIATE_TEST_SUITE_P(On, ConformanceWindows, testing::ValuesIn(controls()), subjectName);
INSTANTIATE_TEST_SUITE_P(
    OnOwn, ConformanceWindows,
    testing::Values(Subject{"Headless", {built("bin/tarni-headless-page")}, {}},
                    Subject{"iOS", {built("bin/ios-page")}, {}}),
    subjectName);

}  // namespace
}  // namespace tarni::test
