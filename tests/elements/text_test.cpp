// The texts of views, for recording and for playback.
#include "agent/elements/Utilities.h"
#include "backends/headless/views/Bars.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/TextView.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::BarItem;
using headless::Button;
using headless::Label;
using headless::SegmentedControl;
using headless::TableViewCell;
using headless::TextField;
using headless::TextView;
using headless::View;

class Text : public CommandScreen {
 protected:
  static std::string recorded(const platform::UIViewRef& view) {
    return Utilities::getUIViewText(view);
  }
  static std::string played(const platform::UIViewRef& view) {
    return Utilities::getUIViewTextForPlayBack(view);
  }
};

TEST_F(Text, IsThatOfTheKindToRecordingAndToPlayback) {
  struct Case {
    platform::UIViewRef view;
    const char* recorded;
    const char* played;
  };
  const auto typed = add<TextField>("Name").label("label").get();
  typed->replaceText("Ada");
  const auto hinted = add<View>().get();
  hinted->setAccessibilityHint("hint");
  const auto textView = add<TextView>("whole").get();
  const auto impostor = add<View>().className("MySegmentedControlBox").get();
  const auto valued = add<View>().label("label").get();
  valued->setAccessibilityValue("value");
  std::vector<Case> cases{
      {typed, "Name", "Ada"},
      {add<TextField>().label("label").get(), "", ""},
      {add<Button>().label("close").get(), "", "close"},
      {add<Label>().label("spoken").get(), "", "spoken"},
      {add<Label>("").label("an empty text is a text").get(), "", ""},
      {add<View>().get(), "", ""},
      {hinted, "hint", "hint"},
      {valued, "value", "value"},
      {headless::build<View>().label("label").in(*impostor), "", ""},
      {textView, "whole", "whole"},
      {headless::build<Label>("part").in(*textView), "part", "whole"},
      {add<TableViewCell>("row").get(), "row", "row"},
  };
  for (const platform::Class cls : {platform::uikit::UIBarButtonItem, platform::uikit::UITabBarItem,
                                    platform::uikit::UINavigationItem}) {
    cases.push_back({add<BarItem>("Item", cls).get(), "Item", "Item"});
  }
  // Of a kind by name only, without what such a view answers.
  for (const platform::Class cls :
       {platform::uikit::UILabel, platform::uikit::UIButton, platform::uikit::UITextField,
        platform::uikit::UITextView, platform::uikit::UITableViewCell}) {
    cases.push_back({add<View>(cls).get(), "", ""});
  }
  for (std::size_t number = 0; number < cases.size(); ++number) {
    EXPECT_EQ(recorded(cases[number].view), cases[number].recorded) << number;
    EXPECT_EQ(played(cases[number].view), cases[number].played) << number;
  }
}

TEST_F(Text, OfASegmentIsTheSelectedTitleOrAllTitles) {
  const std::vector<std::optional<std::string>> titles{"One", "", std::nullopt, "Four"};
  const auto control = add<SegmentedControl>(titles).get();
  const auto segment = headless::build<View>().label("segment").in(*control);
  EXPECT_EQ(recorded(segment), "") << "nothing is selected";
  EXPECT_EQ(played(segment), "One;Four;");
  control->select(3);
  EXPECT_EQ(recorded(segment), "Four");

  control->setAccessibilityValue("value");
  EXPECT_EQ(recorded(control), "value");
  EXPECT_EQ(played(control), "value");
}

}  // namespace
}  // namespace tarni::test
