// The texts of views, for recording and for playback.
#include "agent/elements/Utilities.h"
#include "backends/headless/views/Bars.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/ImageView.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/TextView.h"
#include "tests/elements/Screen.h"

namespace tarni::test {
namespace {

using headless::BarItem;
using headless::Button;
using headless::Label;
using headless::SegmentedControl;
using headless::Switch;
using headless::TableViewCell;
using headless::TextField;
using headless::TextView;
using headless::View;

class Text : public Screen {
 protected:
  static std::string recorded(const platform::UIViewRef& view) {
    return Utilities::getUIViewText(view);
  }
  static std::string played(const platform::UIViewRef& view) {
    return Utilities::getUIViewTextForPlayBack(view);
  }
};

TEST_F(Text, OfAFieldIsItsPlaceholderToRecordingAndWhatWasTypedToPlayback) {
  const auto field = add<TextField>("Name").label("label").get();
  EXPECT_EQ(recorded(field), "Name");
  EXPECT_EQ(played(field), "Name");
  field->replaceText("Ada");
  EXPECT_EQ(recorded(field), "Name");
  EXPECT_EQ(played(field), "Ada");
  EXPECT_EQ(played(add<TextField>().label("label").get()), "");
}

TEST_F(Text, ThatIsNilFallsThroughInPlaybackOnly) {
  const auto button = add<Button>().label("close").get();
  const auto label = add<Label>().label("spoken").get();
  EXPECT_EQ(recorded(button), "");
  EXPECT_EQ(played(button), "close");
  EXPECT_EQ(recorded(label), "");
  EXPECT_EQ(played(label), "spoken");
  label->setText("");
  EXPECT_EQ(played(label), "") << "an empty text is a text";
}

TEST_F(Text, OfAPlainViewIsValueThenLabelThenHint) {
  const auto view = add<View>().get();
  EXPECT_EQ(recorded(view), "");
  view->setAccessibilityHint("hint");
  EXPECT_EQ(recorded(view), "hint");
  view->setAccessibilityLabel("label");
  EXPECT_EQ(played(view), "label");
  view->setAccessibilityValue("value");
  EXPECT_EQ(recorded(view), "value");
  EXPECT_EQ(played(view), "value");
}

TEST_F(Text, OfTitledKindsAndCells) {
  for (const platform::Class cls : {platform::uikit::UIBarButtonItem, platform::uikit::UITabBarItem,
                                    platform::uikit::UINavigationItem}) {
    const auto item = add<BarItem>("Item", cls).get();
    EXPECT_EQ(recorded(item), "Item") << cls->name();
    EXPECT_EQ(played(item), "Item") << cls->name();
  }
  EXPECT_EQ(recorded(add<TextView>("long text").get()), "long text");
  EXPECT_EQ(recorded(add<TableViewCell>("row").get()), "row");
  EXPECT_EQ(played(add<TableViewCell>("row").get()), "row");
}

TEST_F(Text, InsideATextViewIsTheTextViewsInPlayback) {
  const auto textView = add<TextView>("whole").get();
  const auto part = headless::build<Label>("part").in(*textView);
  EXPECT_EQ(recorded(part), "part");
  EXPECT_EQ(played(part), "whole");
}

TEST_F(Text, OfASegmentIsTheSelectedTitleOrAllTitles) {
  const std::vector<std::optional<std::string>> titles{"One", "", std::nullopt, "Four"};
  const auto control = add<SegmentedControl>(titles).get();
  const auto segment = headless::build<View>().label("segment").in(*control);
  EXPECT_EQ(recorded(segment), "") << "nothing is selected";
  EXPECT_EQ(played(segment), "One;Four;");
  control->select(3);
  EXPECT_EQ(recorded(segment), "Four");
  EXPECT_TRUE(environment.log().contains("***FOUND UISEGMENTCONTROL"));

  control->setAccessibilityValue("value");
  EXPECT_EQ(recorded(control), "value");
  EXPECT_EQ(played(control), "value");
}

TEST_F(Text, InsideWhatOnlySoundsLikeASegmentedControlIsEmpty) {
  const auto impostor = add<View>().className("MySegmentedControlBox").get();
  const auto inside = headless::build<View>().label("label").in(*impostor);
  EXPECT_EQ(recorded(inside), "");
  EXPECT_EQ(played(inside), "");
}

TEST_F(Text, OfKindsThatLackTheirOperationsIsEmpty) {
  for (const platform::Class cls :
       {platform::uikit::UILabel, platform::uikit::UIButton, platform::uikit::UITextField,
        platform::uikit::UITextView, platform::uikit::UITableViewCell}) {
    const auto view = add<View>(cls).get();
    EXPECT_EQ(recorded(view), "") << cls->name();
    EXPECT_EQ(played(view), "") << cls->name();
  }
}

TEST_F(Text, OtherPropertiesAreEmptyWhenNil) {
  const auto view = add<View>().className("Fancy").tag(-7).get();
  EXPECT_EQ(Utilities::getUIViewClassName(view), "Fancy");
  EXPECT_EQ(Utilities::getUIViewTag(view), -7);
  EXPECT_EQ(Utilities::getUIViewAccesibilityId(view), "");
  EXPECT_EQ(Utilities::getUIViewAccesibilityLanguage(view), "");
  EXPECT_EQ(Utilities::getUIViewXpath(view), "");
  view->setAccessibilityIdentifier("id");
  view->setAccessibilityLanguage("de");
  EXPECT_EQ(Utilities::getUIViewAccesibilityId(view), "id");
  EXPECT_EQ(Utilities::getUIViewAccesibilityLanguage(view), "de");
}

TEST_F(Text, ElementPropertiesHaveNoXpathOfTheirOwn) {
  const auto label = add<Label>("text").get();
  UIViewsManager manager;
  manager.GetAllViews(window, true);
  const ElementProperties properties = Utilities::createElementProperties(label);
  EXPECT_EQ(properties.getClassName(), "UILabel");
  EXPECT_EQ(properties.getInnerText(), "text");
  EXPECT_EQ(properties.getXPath(), std::nullopt);
  EXPECT_EQ(properties.getBase64Image(), std::nullopt);
}

TEST_F(Text, ActionIsNamedAfterTheKindOfView) {
  const auto action = [](const platform::UIViewRef& view) {
    const MappedActionObject mapped = Utilities::getActionAndDataAccordingToComponent(view);
    EXPECT_EQ(mapped.getDataArgs(), "");
    return mapped.getActionName();
  };
  EXPECT_EQ(action(add<Switch>(true).get()), "Mobile_SelectSwitch");
  EXPECT_TRUE(environment.log().contains("********SWITCH FOUND"));
  EXPECT_EQ(action(add<Switch>(false).className("Toggle").get()), "Mobile_DeSelectSwitch");
  EXPECT_EQ(action(add<View>().className("NotASwitchAtAll").get()), "Click");
  EXPECT_EQ(action(add<Button>("b").get()), "ClickButton");
  EXPECT_EQ(action(add<Button>("b").className("SwitchButton").get()), "Click")
      << "the name goes before the kind, and a button has no state";
  EXPECT_EQ(action(add<headless::ImageView>().get()), "ClickImage");
  EXPECT_EQ(action(add<TextField>().get()), "Click");
  EXPECT_EQ(action(add<Label>("l").get()), "Click");
}

}  // namespace
}  // namespace tarni::test
