// The samples of this project, in Qt Quick on both majors of Qt.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class QuickSample : public RealProgram {
 protected:
  explicit QuickSample(const std::string& name) : RealProgram({built("bin/" + name)}) {}

  void fillIn() const {
    const std::string field = await("UITextField", "User name");
    playback().command("sendkeysonelement", field, "Ada");
    press("UIButton", "Log in");
    EXPECT_TRUE(isShown("UILabel", "Hello, Ada"));
  }
  void chooseInList() const {
    press("UITableViewCell", "Row 2");
    EXPECT_TRUE(isShown("UILabel", "Row 2"));
  }
  void answerPopup() const {
    press("UIButton", "Details…");
    press("UIButton", "OK");
    EXPECT_TRUE(isShown("UILabel", "Accepted"));
  }
  void turnPages() const {
    press("UIButton", "Settings");
    press("UISwitch", "Check for updates");
    press("UIButton", "Back");
    EXPECT_TRUE(isShown("UILabel", "Welcome"));
  }
};

class QuickSample5 : public QuickSample {
 protected:
  QuickSample5() : QuickSample("quick-sample-5") {}
};
class QuickSample6 : public QuickSample {
 protected:
  QuickSample6() : QuickSample("quick-sample-6") {}
};

INSTANTIATE_TEST_SUITE_P(Sample, QuickSample5, platforms(), platformName);
INSTANTIATE_TEST_SUITE_P(Sample, QuickSample6, platforms(), platformName);

TEST_P(QuickSample5, TypesIntoFields) {
  fillIn();
}
TEST_P(QuickSample6, TypesIntoFields) {
  fillIn();
}
TEST_P(QuickSample5, ChoosesRowsOfLists) {
  chooseInList();
}
TEST_P(QuickSample6, ChoosesRowsOfLists) {
  chooseInList();
}
TEST_P(QuickSample5, AnswersPopups) {
  answerPopup();
}
TEST_P(QuickSample6, AnswersPopups) {
  answerPopup();
}
TEST_P(QuickSample5, TurnsPages) {
  turnPages();
}
TEST_P(QuickSample6, TurnsPages) {
  turnPages();
}

}  // namespace
}  // namespace tarni::test
