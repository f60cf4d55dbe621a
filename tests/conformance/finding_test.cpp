#include <algorithm>
#include <set>
#include <stdexcept>

#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

// The XPath position of every element, from descriptions that come parent before children.
std::vector<std::string> positions(const nlohmann::json& elements) {
  struct Level {
    std::string path;
    long left;
    std::map<std::string, int> counts;
  };
  std::vector<std::string> paths;
  std::vector<Level> levels{{"", std::numeric_limits<long>::max(), {}}};
  for (const auto& element : elements) {
    while (levels.back().left == 0) levels.pop_back();
    Level& parent = levels.back();
    --parent.left;
    const std::string type = element["elementType"];
    paths.push_back(parent.path + "\\" + type + "[" + std::to_string(parent.counts[type]++) + "]");
    levels.push_back({paths.back(), std::stol(element["childCount"].get<std::string>()), {}});
  }
  return paths;
}

nlohmann::json everything(Playback& playback) {
  return playback.ask({{"functionname", "ai_findelements"}, {"tagname", ""}});
}

// Of the first element that shows the text.
std::string positionOf(Playback& playback, const std::string& text) {
  const nlohmann::json elements = everything(playback);
  const auto shown = std::ranges::find_if(
      elements, [&text](const nlohmann::json& element) { return element["text"] == text; });
  if (shown == elements.end()) throw std::runtime_error("nothing shows " + text);
  return positions(elements)[static_cast<std::size_t>(shown - elements.begin())];
}

TEST_P(Conformance, FindsByClassInAnyCaseButNotBySuperclass) {
  const std::size_t fields = playback().find("UITextField").size();
  EXPECT_EQ(fields, 2U);
  EXPECT_EQ(playback().find("uitextFIELD").size(), fields);
  EXPECT_TRUE(playback().find("UITextFiel").empty());
  EXPECT_TRUE(playback().find("UIResponder").empty());
  EXPECT_GT(playback().find("").size(), 10U);
}

TEST_P(Conformance, FindsByTextAndPartialText) {
  EXPECT_EQ(playback().find("UIButton", "text", "Log in").size(), 1U);
  EXPECT_EQ(playback().find("uibutton", "TEXT", "Log in").size(), 1U);
  EXPECT_TRUE(playback().find("UIButton", "text", "log in").empty());
  EXPECT_TRUE(playback().find("UILabel", "text", "Log in").empty());
  EXPECT_EQ(playback().find("UIButton", "partialtext", "LOG").size(), 1U);
  EXPECT_EQ(playback().find("UIButton", "partialtext", "").size(),
            playback().find("UIButton").size());
  EXPECT_TRUE(playback().find("UIButton", "id", "login").empty());
}

TEST_P(Conformance, FindsEveryVisibleElementByItsPosition) {
  const nlohmann::json elements = everything(playback());
  const std::vector<std::string> paths = positions(elements);
  ASSERT_EQ(paths.size(), elements.size());
  EXPECT_EQ(std::set<std::string>(paths.begin(), paths.end()).size(), paths.size());
  int found = 0;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (elements[i]["elementType"] != "UIButton") continue;
    if (elements[i]["isVisibleInWindowFrame"] != "true") continue;
    const std::string identifier = playback().one("", "xpath", paths[i]);
    EXPECT_EQ(playback().output("gettext", identifier), elements[i]["text"]) << paths[i];
    ++found;
  }
  EXPECT_GE(found, 2);
  EXPECT_TRUE(playback().find("", "xpath", "\\Nowhere[0]").empty());
}

TEST_P(Conformance, FindsInsideAnElementByEveryAccessor) {
  const auto inside = [&](const std::string& type, const std::string& value) {
    return playback().ask({{"functionname", "findElementsInsideElement"},
                           {"tagname", "UITableViewCell"},
                           {"accessortype", type},
                           {"accessorvalue", value},
                           {"datavalue", playback().one("UITableView")}});
  };
  const nlohmann::json rows = inside("Text", "Row 2");
  ASSERT_EQ(rows.size(), 1U) << rows;
  EXPECT_EQ(playback().output("gettext", rows[0]["elementID"]), "Row 2");
  EXPECT_EQ(inside("", "").size(), playback().find("UITableViewCell").size());
  EXPECT_EQ(inside("partialtext", "row 3").size(), 1U);
  EXPECT_EQ(inside("xpath", positionOf(playback(), "Row 2")).size(), 1U);
  EXPECT_EQ(inside("xpath", positionOf(playback(), "Log in")).size(), 0U) << "it lies elsewhere";
  EXPECT_EQ(inside("id", "Row 2").size(), 0U);
}

TEST_P(Conformance, FindsNothingInsideAnUnknownElement) {
  EXPECT_EQ(playback().ask({{"functionname", "findelementsinsideelement"},
                            {"tagname", ""},
                            {"datavalue", "nobody"}}),
            nlohmann::json::array());
}

TEST_P(Conformance, FindsEditableComponentsByEveryAccessor) {
  const auto editable = [&](const std::string& type, const std::string& value) {
    return playback()
        .ask({{"functionname", "findeditablecomponents"},
              {"accessortype", type},
              {"accessorvalue", value}})
        .size();
  };
  EXPECT_EQ(editable("", ""), 2U);
  EXPECT_EQ(editable("text", "User name"), 1U);
  EXPECT_EQ(editable("text", "user name"), 0U);
  EXPECT_EQ(editable("partialtext", "NAME"), 1U);
  EXPECT_EQ(editable("id", "User name"), 0U);
  EXPECT_EQ(editable("xpath", positionOf(playback(), "User name")), 1U);
  EXPECT_EQ(editable("xpath", "\\Nowhere[0]"), 0U);
}

TEST_P(Conformance, IdentifiersEndWithTheNextFind) {
  const std::string button = playback().one("UIButton", "text", "Log in");
  EXPECT_EQ(playback().output("gettext", button), "Log in");
  const std::string again = playback().one("UIButton", "text", "Log in");
  EXPECT_EQ(playback().output("gettext", button), std::nullopt);
  EXPECT_EQ(playback().output("gettext", again), "Log in");
}

}  // namespace
}  // namespace tarni::test
