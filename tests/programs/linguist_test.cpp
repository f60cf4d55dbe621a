// Qt Linguist: trees in dock widgets, editors, tool bars, dialogs.
#include "tests/programs/RealProgram.h"

namespace tarni::test {
namespace {

constexpr auto kTranslations = R"(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context><name>MainWindow</name>
<message><source>Open</source><translation type="unfinished"></translation></message>
<message><source>Close</source><translation>Schließen</translation></message>
</context>
<context><name>Dialog</name>
<message><source>Hello</source><translation type="unfinished"></translation></message>
</context>
</TS>
)";

class Linguist : public RealProgram {
 protected:
  Linguist() : RealProgram({"/usr/lib/qt6/bin/linguist"}) {
    openAtStart("translations.ts", kTranslations);
  }
  std::string translation() const {
    const auto editors = playback().find("FormatTextEdit");
    return editors.empty() ? "" : playback().output("gettext", editors.front()).value_or("");
  }
};

INSTANTIATE_TEST_SUITE_P(Linguist, Linguist, platforms(), platformName);

TEST_P(Linguist, SelectsRowsOfTreesInDockWidgets) {
  press("UITableViewCell", "Dialog");
  EXPECT_TRUE(isShown("UITableViewCell", "Hello"));
  press("UITableViewCell", "Hello");
  EXPECT_TRUE(eventually([&] { return translation() == "Hello"; }));
}

TEST_P(Linguist, PressesToolBarButtons) {
  press("UITableViewCell", "Open");
  EXPECT_TRUE(eventually([&] { return translation() == "Open"; }));
  press("UIButton", "Next");
  EXPECT_TRUE(eventually([&] { return translation() == "Close"; }));
}

TEST_P(Linguist, OpensMenusAndDialogs) {
  choose({"Edit", "Find..."});
  EXPECT_TRUE(isShown("UISwitch", "Match case"));
  press("UISwitch", "Match case");
  const std::string box = await("UISwitch", "Match case");
  EXPECT_EQ(playback().output("isselected", box), "true");
  press("UIButton", "Cancel");
  EXPECT_TRUE(isShown("UITableViewCell", "MainWindow"));
}

}  // namespace
}  // namespace tarni::test
