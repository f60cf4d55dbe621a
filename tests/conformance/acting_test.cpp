#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

TEST_P(Conformance, TypesAndClicks) {
  const std::string text = "a\"b\\c 'd' \xc3\xa9 \xf0\x9f\x90\xa6 <&>";
  const std::string field = playback().one("UITextField", "text", "User name");
  EXPECT_EQ(playback().command("sendkeysonelement", field, "Someone else"), kNothing);
  playback().command("sendkeysonelement", field, text);
  EXPECT_EQ(playback().output("gettext", field), text);
  EXPECT_EQ(playback().find("UITextField", "text", "User name").size(), 1U)
      << "a field is found by its placeholder, whatever was typed";
  EXPECT_EQ(playback().command("clickelement", playback().one("UIButton", "text", "Log in")),
            kNothing);
  const std::string label = playback().one("UILabel", "text", "Hello, " + text);
  EXPECT_EQ(playback().command("sendkeysonelement", label, "Ada"), kNothing);
  EXPECT_EQ(playback().output("gettext", label), "Hello, " + text) << "a label is no field";
}

TEST_P(Conformance, AModalDialogIsOpenedAndClosedByClicks) {
  const auto open = [this] {
    playback().command("clickelement", playback().one("UIButton", "partialtext", "Details"));
    return shows("UILabel", "Really?");
  };
  ASSERT_TRUE(open());
  const std::string cancel = playback().one("UIButton", "text", "Cancel");
  playback().command("clickelement", cancel);
  EXPECT_TRUE(eventually([&] { return playback().command("clickelement", cancel) == kNothing; }))
      << "a view that went is an unknown element";
  EXPECT_TRUE(eventually([&] { return shows("UILabel", "Rejected"); }));
  EXPECT_FALSE(shows("UILabel", "Really?"));
  ASSERT_TRUE(open());
  playback().command("clickelement", playback().one("UIButton", "text", "OK"));
  EXPECT_TRUE(eventually([&] { return shows("UILabel", "Accepted"); }));
}

// The points of a swipe are in the list's own coordinates, which scroll with it: a second swipe may
// fall outside.
TEST_P(Conformance, SwipesScrollAndRowsAreClicked) {
  const std::string row = playback().one("UITableViewCell", "text", "Row 2");
  EXPECT_EQ(playback().command("clickelement", row), kNothing);
  EXPECT_EQ(playback().output("gettext", row), "Row 2");
  const auto showsFirst = [this] { return shows("UITableViewCell", "Row 1"); };
  playback().command("swipeon", playback().one("UITableView"), "Down");
  EXPECT_TRUE(showsFirst());
  playback().command("swipeon", playback().one("UITableView"), "Up");
  EXPECT_TRUE(eventually([&] { return !showsFirst(); }));
  EXPECT_EQ(playback().command("swipereset"), kNothing);
  EXPECT_TRUE(eventually(showsFirst));
  EXPECT_EQ(playback().command("swipeto"), kNothing);
  EXPECT_TRUE(eventually([&] { return !showsFirst(); }));
  for (const char* direction : {"left", "Right", "UP", "down", "sideways", ""}) {
    EXPECT_EQ(playback().command("swipeon", "", direction), kNothing) << direction;
  }
  EXPECT_EQ(playback().command("swipeon", "nobody", "up"), kNothing);
}

// No cursor blinks while a button has the focus: the pictures differ by the border alone.
TEST_P(Conformance, AHighlightLastsASecond) {
  const std::string button = playback().one("UIButton", "text", "Log in");
  playback().command("clickelement", button);
  const auto picture = [&] { return playback().command("ai_getscreensnapshot"); };
  const nlohmann::json plain = picture();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(playback().command("highlight", button), kNothing);
  EXPECT_NE(picture(), plain);
  ASSERT_TRUE(eventually([&] { return picture() == plain; }));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

}  // namespace
}  // namespace tarni::test
