// What a view draws itself and tells to accessibility alone, over the session channel.
#include <gmock/gmock.h>

#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using nlohmann::json;

TEST(ConformanceDrawn, ElementsStandInTheTreeAndTakeTapsWhereTheyAre) {
  const SessionFolder folder;
  Program::Environment environment = agentEnvironment();
  environment["TARNI_SESSION"] = folder.socket();
  const Program program({built("bin/ios-page")}, environment);
  const SessionWire wire(folder.socket());
  const json group = wire.find({{"label", "Stars"}});
  const json star = wire.find({{"label", "Star 3"}, {"within", group["element"]}});
  EXPECT_EQ(star["class"], "UIAccessibilityElement");
  EXPECT_EQ(star["rect"], (json{{"x", 120}, {"y", 720}, {"width", 50}, {"height", 50}}));
  EXPECT_TRUE(star["visible"]);
  const json tree = wire.ask("tree.get", json::object());
  const auto inTree = [&](const json& element) {
    for (const json& one : tree["elements"]) {
      if (one["element"] == element) return one;
    }
    return json();
  };
  const json above = inTree(inTree(star["element"])["parent"]);
  EXPECT_EQ(above["element"], group["element"]);
  EXPECT_EQ(inTree(above["parent"])["class"], "StarsView");

  wire.ask("element.click", {{"element", star["element"]}});
  const auto awaitGiven = [&](const char* stars) {
    wire.await({{"element", group["element"]}, {"textIs", stars}});
  };
  awaitGiven("3");
  EXPECT_THAT(wire.ask("tree.get", {{"since", tree["version"]}})["elements"].dump(),
              testing::HasSubstr(R"("value":"3")"));
  const json touched = {{"finger", 1}, {"element", wire.find({{"label", "Star 2"}})["element"]}};
  wire.ask("input.touch", {{"steps", {{{"down", touched}}, {{"up", touched}}}}});
  awaitGiven("2");
  const json soldOut = wire.find({{"label", "Star 4"}});
  EXPECT_FALSE(soldOut["enabled"]);
  EXPECT_ANY_THROW(wire.ask("element.click", {{"element", soldOut["element"]}}));

  const json locators = wire.ask("element.locators", {{"element", star["element"]}})["locators"];
  for (const json& locator : locators) {
    if (locator["matches"] != 1) continue;
    EXPECT_EQ(wire.find(locator["find"])["element"], star["element"]) << locator;
  }
  EXPECT_THAT(locators.dump(), testing::HasSubstr("UIAccessibilityElement[2]")) << "its position";
  EXPECT_THAT(Playback().find("UIAccessibilityElement"), testing::IsEmpty())
      << "the ports know views alone";
}

}  // namespace
}  // namespace tarni::test
