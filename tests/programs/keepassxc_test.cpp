// KeePassXC: a wizard, a message box, menus, pages of settings.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

class KeePassXC : public RealProgram {
 protected:
  KeePassXC() : RealProgram({"keepassxc"}) {}
};

INSTANTIATE_TEST_SUITE_P(KeePassXC, KeePassXC, platforms(), platformName);

TEST_P(KeePassXC, PressesButtonsFoundByText) {
  press("UIButton", "Create new database");
  EXPECT_TRUE(isShown("UIButton", "Continue"));
}

TEST_P(KeePassXC, GoesThroughAWizardToAMessageBox) {
  press("UIButton", "Create new database");
  for (const char* const page :
       {"NewDatabaseWizardPageMetaData", "NewDatabaseWizardPageEncryption"}) {
    EXPECT_TRUE(eventually([&] { return shown(page).size() == 1; })) << page;
    press("UIButton", "Continue");
  }
  EXPECT_TRUE(eventually([&] { return shown("PasswordWidget").size() == 2; }));
  press("UIButton", "Done");
  EXPECT_TRUE(isShown("UIButton", "Continue without password"));
  press("UIButton", "Cancel");
  EXPECT_TRUE(isShown("UIButton", "Done"));
}

TEST_P(KeePassXC, OpensMenusAndPagesOfSettings) {
  choose({"Tools", "Settings"});
  EXPECT_TRUE(isShown("UILabel", "Application Settings"));
  EXPECT_TRUE(isShown("UITabBarButton", "Basic Settings"));
}

// In a language that is read from the right, with the layout turned round.
class KeePassXCInHebrew : public KeePassXC {
 protected:
  KeePassXCInHebrew() {
    speak("he_IL.UTF-8");
    scale(2);
  }
};

INSTANTIATE_TEST_SUITE_P(KeePassXC, KeePassXCInHebrew, platforms(), platformName);

TEST_P(KeePassXCInHebrew, GoesThroughAWizardAtTwoPixelsAPoint) {
  press("UIButton", "יצירת מסד־נתונים חדש");
  EXPECT_TRUE(eventually([&] { return shown("NewDatabaseWizardPageMetaData").size() == 1; }));
}

}  // namespace
}  // namespace tarni::test
