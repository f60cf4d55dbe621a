#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

TEST_P(Conformance, ReadsTexts) {
  EXPECT_EQ(playback().output("gettext", playback().one("UILabel", "text", "Welcome")), "Welcome");
  const std::string field = playback().one("UITextField", "text", "User name");
  EXPECT_EQ(playback().output("gettext", field), "User name");
  playback().command("sendkeysonelement", field, "Ada");
  EXPECT_EQ(playback().output("gettext", field), "Ada");
  EXPECT_EQ(playback().find("UITextField", "text", "User name").size(), 1U)
      << "a field is found by its placeholder, whatever was typed";
}

TEST_P(Conformance, ReadsSizesAsWholeNumbers) {
  const std::string button = playback().one("UIButton", "text", "Log in");
  for (const char* command : {"getwidth", "getheight"}) {
    const std::string size = playback().output(command, button).value_or("");
    EXPECT_EQ(size.find_first_not_of("0123456789"), std::string::npos) << size;
    EXPECT_GT(std::stoi(size), 5);
  }
}

TEST_P(Conformance, ReadsStates) {
  const std::string button = playback().one("UIButton", "text", "Log in");
  EXPECT_EQ(playback().output("isenabled", button), "true");
  EXPECT_EQ(playback().output("isdisplayed", button), "true");
  EXPECT_EQ(playback().output("isselected", button), std::nullopt);
}

TEST_P(Conformance, ASwitchIsSelectedTwice) {
  const std::string remember = playback().one("UISwitch");
  const nlohmann::json off = {{{"output", "false"}}, {{"output", "false"}}};
  const nlohmann::json on = {{{"output", "true"}}, {{"output", "true"}}};
  EXPECT_EQ(playback().command("isselected", remember), off);
  playback().command("clickelement", remember);
  EXPECT_EQ(playback().command("isselected", remember), on);
}

}  // namespace
}  // namespace tarni::test
