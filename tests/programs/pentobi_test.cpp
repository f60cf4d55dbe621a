// Pentobi: a game of Qt Quick, with buttons that show icons only, and dialogs.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class Pentobi : public RealProgram {
 protected:
  Pentobi() : RealProgram({"/usr/games/pentobi"}) {}
};

INSTANTIATE_TEST_SUITE_P(Pentobi, Pentobi, platforms(), platformName);

TEST_P(Pentobi, PressesButtonsThatShowIconsOnly) {
  press("UIButton", "Settings");
  EXPECT_TRUE(isShown("UILabel", "Computer plays:"));
}

TEST_P(Pentobi, SwitchesInDialogs) {
  press("UIButton", "Settings");
  const auto isOn = [this] { return playback().output("isselected", await("UISwitch", "Orange")); };
  const auto before = isOn();
  press("UISwitch", "Orange");
  EXPECT_TRUE(eventually([&] { return isOn() != before; }));
  press("ButtonOk", "OK");
  EXPECT_TRUE(eventually([this] { return shown("ButtonOk").empty(); }));
}

}  // namespace
}  // namespace tarni::test
