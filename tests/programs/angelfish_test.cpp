// Angelfish: a browser of Qt Quick on a phone's controls, with buttons that show icons only.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class Angelfish : public RealProgram {
 protected:
  Angelfish() : RealProgram({"angelfish"}) {
    needSessionBus();
    openAtStart("shop.html", kShop);
  }
  // Nothing says what it is but its place.
  std::string menuButton() const {
    std::string last;
    double x = 0;
    for (const auto& button :
         playback().ask({{"functionname", "ai_findelements"}, {"tagname", "UIButton"}})) {
      const auto& place = button["rectangle"];
      const double left = std::stod(place["x"].get<std::string>());
      if (std::stod(place["y"].get<std::string>()) > 0 || left < x) continue;
      x = left;
      last = button["elementID"];
    }
    return last;
  }
};

INSTANTIATE_TEST_SUITE_P(Angelfish, Angelfish, platforms(), platformName);

TEST_P(Angelfish, ShowsPagesInTabs) {
  press("BUTTON", "Buy");
  EXPECT_TRUE(isShown("BUTTON", "Sold"));
  EXPECT_TRUE(isShown("UITableViewCell", "Sold"));
}

TEST_P(Angelfish, OpensMenusAboveThePage) {
  await("UITableViewCell", "Shop");
  playback().command("clickelement", menuButton());
  press("UIButton", "Find in page");
  EXPECT_TRUE(isShown("UITextField", "Search..."));
}

}  // namespace
}  // namespace tarni::test
