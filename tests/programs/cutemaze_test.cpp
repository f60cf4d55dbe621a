// CuteMaze: a game that draws itself, with menus, tool bars and dialogs around it.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class CuteMaze : public RealProgram {
 protected:
  CuteMaze() : RealProgram({"/usr/games/cutemaze"}) {}
};

INSTANTIATE_TEST_SUITE_P(CuteMaze, CuteMaze, platforms(), platformName);

TEST_P(CuteMaze, OpensMenusAndDialogs) {
  choose({"Help", "About"});
  EXPECT_TRUE(isShown("UIButton", "OK"));
}

}  // namespace
}  // namespace tarni::test
