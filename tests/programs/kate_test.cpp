// Kate: KDE's widgets with classes of their own, an editor that draws its text itself.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class Kate : public RealProgram {
 protected:
  Kate() : RealProgram({"kate", "--startanon"}) { openAtStart("letter.txt", "Dear Ada\n"); }
};

INSTANTIATE_TEST_SUITE_P(Kate, Kate, platforms(), platformName);

TEST_P(Kate, OpensFilesInTabs) {
  EXPECT_TRUE(isShown("UITabBarButton", "letter.txt"));
}

TEST_P(Kate, OpensMenusAndTheirEntries) {
  choose({"File", "New"});
  EXPECT_TRUE(isShown("UITabBarButton", "Untitled"));
}

TEST_P(Kate, ReadsAnEditorThatDrawsItsTextItself) {
  await("UITabBarButton", "letter.txt");
  bool isRead = false;
  EXPECT_TRUE(eventually([&] {
    for (const auto& view : playback().find("KateViewInternal")) {
      isRead = isRead || playback().output("gettext", view) == "Dear Ada\n";
    }
    return isRead;
  }));
}

}  // namespace
}  // namespace tarni::test
