// XPath positions: how they are formed, filed and looked up.
#include <random>

#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::View;
using headless::ViewRef;

class Xpath : public CommandScreen {
 protected:
  XpathManager& xpaths = XpathManager::sharedInstance();
};

// An application's label class is a label here and an image view there, under one name.
TEST_F(Xpath, GoesByTheClassNameWhateverTheSuperclass) {
  static const platform::ClassInfo pictured("TwinLabel", platform::uikit::UIImageView);
  const auto worded = add<Label>("words").className("TwinLabel").get();
  const auto picture = add<View>().get();
  picture->setClass(&pictured);
  const auto inside = headless::build<View>().in(*picture);
  UIViewsManager manager;
  manager.GetAllViewsForPlayer(window, true);
  EXPECT_EQ(xpathOf(worded), "\\TwinLabel[0]");
  EXPECT_EQ(xpathOf(inside), "\\TwinLabel[1]\\UIView[0]");
  for (const ViewRef& view : std::vector<ViewRef>{worded, picture, inside}) {
    const platform::Guid guid = *tagOf(view, kPlaybackTag);
    EXPECT_EQ(xpaths.getIdentificationGUIDFromXpath(*xpathOf(view)), guid);
    xpaths.createXpathPositionOfUIView(view->superview(), view, guid);
    EXPECT_EQ(xpaths.getIdentificationGUIDFromXpath(*xpathOf(view)), guid);
  }
}

TEST_F(Xpath, IsLookedUpByItsExactTextOnly) {
  const auto label = add<Label>("one").className("ExactLabel").get();
  UIViewsManager manager;
  manager.GetAllViewsForPlayer(window, true);
  const auto guid = tagOf(label, kPlaybackTag);
  EXPECT_EQ(xpaths.getIdentificationGUIDFromXpath("\\ExactLabel[0]"), guid);
  for (const char* wrong :
       {"", "\\", "ExactLabel[0]", "\\ExactLabel", "\\ExactLabel[", "\\ExactLabel[]",
        "\\ExactLabel[00]", "\\ExactLabel[+0]", "\\ExactLabel[-0]", "\\ExactLabel[0] ",
        "\\ExactLabel[0]\\", "\\exactlabel[0]", "\\ExactLabel[1]", "\\NoSuchClassAnywhere[0]",
        "\\ExactLabel[99999999999999999999]", "\\\\ExactLabel[0]"}) {
    EXPECT_EQ(xpaths.getIdentificationGUIDFromXpath(wrong), std::nullopt) << wrong;
  }
}

TEST_F(Xpath, OfAViewIsThatOfItsRecordingTagFirst) {
  const auto spacer = add<Label>("goes").className("BothLabel").get();
  const auto label = add<Label>("stays").className("BothLabel").get();
  UIViewsManager manager;
  manager.GetAllViewsForPlayer(window, true);
  EXPECT_EQ(xpathOf(label), "\\BothLabel[1]") << "the playback tag serves while it is the only one";
  spacer->removeFromSuperview();
  manager.GetAllViewsForPlayer(window, true);
  EXPECT_EQ(xpathOf(label), "\\BothLabel[1]") << "it is kept when siblings go";
  manager.GetAllViews(window, true);
  EXPECT_EQ(xpathOf(label), "\\BothLabel[0]");
  EXPECT_NE(tagOf(label, kRecordingTag), tagOf(label, kPlaybackTag));
  EXPECT_EQ(xpathOf(window), std::nullopt);
  EXPECT_EQ(xpathOf(nullptr), std::nullopt);
}

// The walks count as they go; the public form counts for itself. Both must say the same.
TEST_F(Xpath, WalkAgreesWithCountingOneByOne) {
  std::mt19937 random(7);
  std::vector<ViewRef> views{window};
  const std::vector<std::string> names{"WalkA", "WalkB", "WalkC"};
  for (int made = 0; made < 500; ++made) {
    auto view = headless::build<View>().className(names[random() % names.size()]);
    if (random() % 8 == 0) view.hidden();
    views.push_back(view.in(*views[random() % views.size()]));
  }
  UIViewsManager manager;
  manager.GetAllViewsForPlayer(window, true);
  for (std::size_t index = 1; index < views.size(); ++index) {
    const auto walked = xpathOf(views[index]);
    const platform::Guid guid = *tagOf(views[index], kPlaybackTag);
    xpaths.createXpathPositionOfUIView(views[index]->superview(), views[index], guid);
    ASSERT_EQ(xpathOf(views[index]), walked);
    ASSERT_EQ(xpaths.getIdentificationGUIDFromXpath(*walked), guid);
  }
}

}  // namespace
}  // namespace tarni::test
