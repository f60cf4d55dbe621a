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

// Of the first element that shows the text.
std::string positionOf(Playback& playback, const std::string& text) {
  const nlohmann::json elements = playback.describe();
  const auto shown = std::ranges::find_if(
      elements, [&text](const nlohmann::json& element) { return element["text"] == text; });
  if (shown == elements.end()) throw std::runtime_error("nothing shows " + text);
  return positions(elements)[static_cast<std::size_t>(shown - elements.begin())];
}

TEST_P(Conformance, FindsByClassInAnyCaseAndByText) {
  EXPECT_EQ(playback().find("UITextField").size(), 2U);
  EXPECT_EQ(playback().find("uitextFIELD").size(), 2U);
  EXPECT_TRUE(playback().find("UITextFiel").empty());
  EXPECT_TRUE(playback().find("UIResponder").empty()) << "not by a superclass";
  EXPECT_GT(playback().find("").size(), 10U);
  EXPECT_EQ(playback().find("uibutton", "TEXT", "Log in").size(), 1U);
  EXPECT_TRUE(playback().find("UIButton", "text", "log in").empty());
  EXPECT_TRUE(playback().find("UILabel", "text", "Log in").empty());
  EXPECT_EQ(playback().find("UIButton", "partialtext", "LOG").size(), 1U);
  EXPECT_EQ(playback().find("UIButton", "partialtext", "").size(),
            playback().find("UIButton").size());
  EXPECT_TRUE(playback().find("UIButton", "id", "login").empty());
}

TEST_P(Conformance, FindsEveryVisibleElementByItsPosition) {
  const nlohmann::json elements = playback().describe();
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

TEST_P(Conformance, FindsInsideAnElementAndAmongFieldsByEveryAccessor) {
  const auto rows = [&](const std::string& type, const std::string& value) {
    return playback().ask({{"functionname", "findElementsInsideElement"},
                           {"tagname", "UITableViewCell"},
                           {"accessortype", type},
                           {"accessorvalue", value},
                           {"datavalue", playback().one("UITableView")}});
  };
  const nlohmann::json second = rows("Text", "Row 2");
  ASSERT_EQ(second.size(), 1U) << second;
  EXPECT_EQ(playback().output("gettext", second[0]["elementID"]), "Row 2");
  EXPECT_EQ(rows("", "").size(), playback().find("UITableViewCell").size());
  EXPECT_EQ(rows("partialtext", "row 3").size(), 1U);
  EXPECT_EQ(rows("xpath", positionOf(playback(), "Row 2")).size(), 1U);
  EXPECT_EQ(rows("xpath", positionOf(playback(), "Log in")).size(), 0U) << "it lies elsewhere";
  EXPECT_EQ(rows("id", "Row 2").size(), 0U);
  const auto fields = [&](const std::string& type, const std::string& value) {
    return playback()
        .ask({{"functionname", "findeditablecomponents"},
              {"accessortype", type},
              {"accessorvalue", value}})
        .size();
  };
  EXPECT_EQ(fields("", ""), 2U);
  EXPECT_EQ(fields("text", "User name"), 1U);
  EXPECT_EQ(fields("text", "user name"), 0U);
  EXPECT_EQ(fields("partialtext", "NAME"), 1U);
  EXPECT_EQ(fields("id", "User name"), 0U);
  EXPECT_EQ(fields("xpath", positionOf(playback(), "User name")), 1U);
  EXPECT_EQ(fields("xpath", "\\Nowhere[0]"), 0U);
}

TEST_P(Conformance, IdentifiersEndWithTheNextSearchOrDescription) {
  const std::string button = playback().one("UIButton", "text", "Log in");
  EXPECT_EQ(playback().output("gettext", button), "Log in");
  const std::string again = playback().one("UIButton", "text", "Log in");
  EXPECT_EQ(playback().output("gettext", button), std::nullopt);
  EXPECT_EQ(playback().output("gettext", again), "Log in");
  const std::string described = playback().describe("UISwitch")[0]["elementID"];
  EXPECT_EQ(playback().output("gettext", again), std::nullopt);
  EXPECT_EQ(playback().output("isenabled", described), "true");
}

}  // namespace
}  // namespace tarni::test
