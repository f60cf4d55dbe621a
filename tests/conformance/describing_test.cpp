#include <set>

#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

nlohmann::json describe(Playback& playback, const std::string& tag) {
  return playback.ask({{"functionname", "ai_findelements"}, {"tagname", tag}});
}

TEST_P(Conformance, DescribesElementsWithEveryKey) {
  const nlohmann::json buttons = describe(playback(), "UIButton");
  ASSERT_GE(buttons.size(), 2U);
  const std::set<std::string> expected{"elementID",
                                       "text",
                                       "elementType",
                                       "imageBase64",
                                       "childCount",
                                       "isProbablyTappable",
                                       "isVisibleInViewHierarchy",
                                       "isVisibleInWindowFrame",
                                       "isUserInteractionEnabled",
                                       "isHidden",
                                       "isEditable",
                                       "isScrollable",
                                       "isImageObject",
                                       "rectangle"};
  for (const auto& button : buttons) {
    std::set<std::string> keys;
    for (const auto& [key, value] : button.items()) keys.insert(key);
    EXPECT_EQ(keys, expected);
    EXPECT_EQ(button["elementType"], "UIButton");
    if (button["isVisibleInWindowFrame"] == "true") {
      EXPECT_EQ(button["imageBase64"].get<std::string>().substr(0, 4), "/9j/");
    }
  }
}

TEST_P(Conformance, DescriptionsTellTheKindsApart) {
  for (const auto& field : describe(playback(), "UITextField")) {
    EXPECT_EQ(field["isEditable"], "true");
    EXPECT_EQ(field["isScrollable"], "false");
    EXPECT_EQ(field["isProbablyTappable"], "true");
  }
  const nlohmann::json list = describe(playback(), "UITableView");
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0]["isScrollable"], "true");
  EXPECT_EQ(list[0]["isEditable"], "false");
}

TEST_P(Conformance, RectanglesLieInTheWindowAndAreMeasuredInPoints) {
  for (const auto& button : describe(playback(), "UIButton")) {
    if (button["text"] != "Log in") continue;
    const auto value = [&](const char* key) {
      return std::stod(button["rectangle"][key].get<std::string>());
    };
    EXPECT_GT(value("x"), 0);
    EXPECT_GT(value("y"), 0);
    EXPECT_EQ(button["rectangle"]["x"].get<std::string>().find('.') + 3,
              button["rectangle"]["x"].get<std::string>().size());
    const std::string identifier = button["elementID"];
    EXPECT_EQ(playback().output("getwidth", identifier),
              std::to_string(std::lround(value("width"))));
    return;
  }
  FAIL() << "no button shows Log in";
}

TEST_P(Conformance, ANewDescriptionGivesNewIdentifiers) {
  const std::string first = describe(playback(), "UISwitch")[0]["elementID"];
  const std::string second = describe(playback(), "UISwitch")[0]["elementID"];
  EXPECT_NE(first, second);
  EXPECT_EQ(playback().output("isenabled", first), std::nullopt);
  EXPECT_EQ(playback().output("isenabled", second), "true");
  EXPECT_EQ(describe(playback(), "NoSuchClass"), nlohmann::json::array());
}

TEST_P(Conformance, TheSnapshotIsAPicture) {
  const nlohmann::json answer = playback().command("ai_getscreensnapshot");
  ASSERT_EQ(answer.size(), 1U);
  const std::string image = answer[0]["output"];
  EXPECT_EQ(image.substr(0, 4), "/9j/");
  EXPECT_GT(image.size(), 4000U);
  EXPECT_EQ(image.find_first_of("\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarni::test
