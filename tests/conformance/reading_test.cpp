// What is told of elements: texts, sizes, states, descriptions, pictures.
#include <cmath>

#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

TEST_P(Conformance, ReadsTextsSizesAndStates) {
  EXPECT_EQ(playback().output("gettext", playback().one("UILabel", "text", "Welcome")), "Welcome");
  const std::string button = playback().one("UIButton", "text", "Log in");
  for (const char* command : {"getwidth", "getheight"}) {
    const std::string size = playback().output(command, button).value_or("");
    EXPECT_EQ(size.find_first_not_of("0123456789"), std::string::npos) << size;
    EXPECT_GT(std::stoi(size), 5);
  }
  EXPECT_EQ(playback().output("isenabled", button), "true");
  EXPECT_EQ(playback().output("isdisplayed", button), "true");
  EXPECT_EQ(playback().output("isselected", button), std::nullopt);
  const std::string remember = playback().one("UISwitch");
  const nlohmann::json off = {{{"output", "false"}}, {{"output", "false"}}};
  const nlohmann::json on = {{{"output", "true"}}, {{"output", "true"}}};
  EXPECT_EQ(playback().command("isselected", remember), off) << "a switch tells it twice";
  playback().command("clickelement", remember);
  EXPECT_EQ(playback().command("isselected", remember), on);
}

TEST_P(Conformance, DescribesElementsWithEveryKey) {
  nlohmann::json logIn;
  for (const auto& button : playback().describe("UIButton")) {
    EXPECT_EQ(button.size(), 14U);
    EXPECT_EQ(button["elementType"], "UIButton");
    if (button["isVisibleInWindowFrame"] == "true") {
      EXPECT_EQ(button["imageBase64"].get<std::string>().substr(0, 4), "/9j/");
    }
    if (button["text"] == "Log in") logIn = button;
  }
  ASSERT_FALSE(logIn.is_null());
  const auto value = [&](const char* key) {
    return std::stod(logIn["rectangle"][key].get<std::string>());
  };
  EXPECT_GT(value("x"), 0);
  EXPECT_GT(value("y"), 0);
  const std::string x = logIn["rectangle"]["x"];
  EXPECT_EQ(x.find('.') + 3, x.size()) << "in hundredths of a point";
  EXPECT_EQ(playback().output("getwidth", logIn["elementID"]),
            std::to_string(std::lround(value("width"))));
  for (const auto& field : playback().describe("UITextField")) {
    EXPECT_EQ(field["isEditable"], "true");
    EXPECT_EQ(field["isScrollable"], "false");
    EXPECT_EQ(field["isProbablyTappable"], "true");
  }
  const nlohmann::json list = playback().describe("UITableView");
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0]["isScrollable"], "true");
  EXPECT_EQ(list[0]["isEditable"], "false");
  EXPECT_TRUE(playback().describe("NoSuchClass").empty());
  const std::string image = playback().output("ai_getscreensnapshot", "").value_or("");
  EXPECT_EQ(image.substr(0, 4), "/9j/");
  EXPECT_GT(image.size(), 4000U);
  EXPECT_EQ(image.find_first_of("\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarni::test
