// Falkon: a browser of widgets, with buttons that show icons only.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class Falkon : public RealProgram {
 protected:
  Falkon() : RealProgram({"falkon", "--no-remote", "--private-browsing"}) {
    openAtStart("shop.html", kShop);
  }
};

INSTANTIATE_TEST_SUITE_P(Falkon, Falkon, platforms(), platformName);

TEST_P(Falkon, ShowsPagesInTabs) {
  press("BUTTON", "Buy");
  EXPECT_TRUE(isShown("UITabBarButton", "Sold"));
}

TEST_P(Falkon, PressesButtonsThatShowIconsOnly) {
  await("UITabBarButton", "Shop");
  press("ToolButton", "Main Menu");
  EXPECT_TRUE(isShown("UIActionButton", "Find"));
}

TEST_P(Falkon, FindsWhatStandsInTheOpenTab) {
  await("BUTTON", "Buy");
  press("ToolButton", "Main Menu");
  press("UIActionButton", "New Tab");
  EXPECT_TRUE(eventually([this] { return playback().find("BUTTON", "text", "Buy").empty(); }));
  press("UITabBarButton", "Shop");
  await("BUTTON", "Buy");
}

}  // namespace
}  // namespace tarni::test
