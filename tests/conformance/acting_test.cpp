#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

TEST_P(Conformance, TypesAndClicks) {
  const std::string field = playback().one("UITextField", "text", "User name");
  EXPECT_EQ(playback().command("sendkeysonelement", field, "Someone else"),
            nlohmann::json::array());
  playback().command("sendkeysonelement", field, "Ada");
  EXPECT_EQ(playback().command("clickelement", playback().one("UIButton", "text", "Log in")),
            nlohmann::json::array());
  EXPECT_TRUE(shows("UILabel", "Hello, Ada"));
}

TEST_P(Conformance, TextArrivesAsItWasSent) {
  const std::string text = "a\"b\\c 'd' \xc3\xa9 \xf0\x9f\x90\xa6 <&>";
  const std::string field = playback().one("UITextField", "text", "User name");
  playback().command("sendkeysonelement", field, text);
  EXPECT_EQ(playback().output("gettext", field), text);
  playback().command("clickelement", playback().one("UIButton", "text", "Log in"));
  EXPECT_TRUE(shows("UILabel", "Hello, " + text)) << "and it is found as it stands there";
}

TEST_P(Conformance, TypingIntoWhatIsNoFieldChangesNothing) {
  const std::string label = playback().one("UILabel", "text", "Welcome");
  EXPECT_EQ(playback().command("sendkeysonelement", label, "Ada"), nlohmann::json::array());
  EXPECT_EQ(playback().output("gettext", label), "Welcome");
}

TEST_P(Conformance, AModalDialogIsOpenedAndClosedByTwoClicks) {
  const std::string details = playback().one("UIButton", "partialtext", "Details");
  playback().command("clickelement", details);
  ASSERT_TRUE(shows("UILabel", "Really?"));
  playback().command("clickelement", playback().one("UIButton", "text", "OK"));
  EXPECT_TRUE(eventually([&] { return shows("UILabel", "Accepted"); }));
  EXPECT_FALSE(shows("UILabel", "Really?"));
}

TEST_P(Conformance, AViewThatWentIsAnUnknownElement) {
  playback().command("clickelement", playback().one("UIButton", "partialtext", "Details"));
  const std::string cancel = playback().one("UIButton", "text", "Cancel");
  playback().command("clickelement", cancel);
  EXPECT_TRUE(eventually(
      [&] { return playback().command("clickelement", cancel) == nlohmann::json::array(); }));
  EXPECT_TRUE(eventually([&] { return shows("UILabel", "Rejected"); }));
}

// The points of a swipe are in the list's own coordinates, which scroll with it: a second swipe may
// fall outside.
TEST_P(Conformance, ASwipeScrollsTheList) {
  ASSERT_TRUE(shows("UITableViewCell", "Row 1"));
  playback().command("swipeon", playback().one("UITableView"), "Down");
  EXPECT_TRUE(shows("UITableViewCell", "Row 1"));
  playback().command("swipeon", playback().one("UITableView"), "Up");
  EXPECT_TRUE(eventually([&] { return !shows("UITableViewCell", "Row 1"); }));
  playback().command("swipereset");
  EXPECT_TRUE(eventually([&] { return shows("UITableViewCell", "Row 1"); }));
}

TEST_P(Conformance, SwipeToAndSwipeResetMoveEverythingThatScrolls) {
  ASSERT_TRUE(shows("UITableViewCell", "Row 1"));
  EXPECT_EQ(playback().command("swipeto"), nlohmann::json::array());
  EXPECT_TRUE(eventually([&] { return !shows("UITableViewCell", "Row 1"); }));
  EXPECT_EQ(playback().command("swipereset"), nlohmann::json::array());
  EXPECT_TRUE(eventually([&] { return shows("UITableViewCell", "Row 1"); }));
}

TEST_P(Conformance, SwipesOfNoDirectionAndOfTheWholeWindowAreAnswered) {
  for (const char* direction : {"left", "Right", "UP", "down", "sideways", ""}) {
    EXPECT_EQ(playback().command("swipeon", "", direction), nlohmann::json::array()) << direction;
  }
  EXPECT_EQ(playback().command("swipeon", "nobody", "up"), nlohmann::json::array());
}

TEST_P(Conformance, ARowCanBeClicked) {
  const std::string row = playback().one("UITableViewCell", "text", "Row 2");
  EXPECT_EQ(playback().command("clickelement", row), nlohmann::json::array());
  EXPECT_EQ(playback().output("gettext", row), "Row 2");
}

// No cursor blinks while a button has the focus: the pictures differ by the border alone.
TEST_P(Conformance, AHighlightLastsASecond) {
  const std::string button = playback().one("UIButton", "text", "Log in");
  playback().command("clickelement", button);
  const auto picture = [&] { return playback().command("ai_getscreensnapshot"); };
  const nlohmann::json plain = picture();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(playback().command("highlight", button), nlohmann::json::array());
  EXPECT_NE(picture(), plain);
  ASSERT_TRUE(eventually([&] { return picture() == plain; }));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

}  // namespace
}  // namespace tarni::test
