// What controls tell and what they do for the agent, and what the program hears of it.

#include "platform/UIKit/UIItems.h"
#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

class Controls : public QuickScreen {
 protected:
  // Types into the field of that name; what it holds then.
  std::string type(const char* name, const std::string& text) {
    finish(as<platform::UITextField>(view(name))->setText(text));
    return as<platform::UITextField>(view(name))->text();
  }
};

TEST_F(Controls, AFieldTakesWhatAPersonCouldTypeWholeAndWithoutKeys) {
  show(R"(Column {
    TextField { objectName: "field"; text: "before"
      property string keys; property int edits; property int accepts
      Keys.onPressed: function(event) { keys += event.text }
      onTextEdited: ++edits
      onAccepted: ++accepts }
    TextField { objectName: "digits"; validator: IntValidator { bottom: 0; top: 99 } }
    TextField { objectName: "short"; maximumLength: 3 }
    TextField { objectName: "masked"; inputMask: "99-99"; text: "56-78" }
    SpinBox { editable: true; contentItem: TextInput { objectName: "spun"; text: "5" } }
    TextField { objectName: "fixed"; text: "as it is"; readOnly: true }
    TextField { objectName: "off"; text: "as it is"; enabled: false }
    TextField { objectName: "secret"; echoMode: TextInput.Password; placeholderText: "PIN" } })");
  const std::string text = "A\u00e9 \U0001F9A6";
  EXPECT_EQ(type("field", text), text);
  EXPECT_EQ(type("field", ""), "");
  EXPECT_EQ(object("field")->property("edits").toInt(), 2);
  EXPECT_EQ(object("field")->property("keys").toString(), QString());
  EXPECT_EQ(object("field")->property("accepts").toInt(), 0);
  EXPECT_EQ(type("digits", "12"), "12");
  EXPECT_EQ(type("digits", "3b"), "12");
  EXPECT_EQ(type("masked", "1234"), "12-34");
  EXPECT_EQ(type("spun", "42"), "42");
  EXPECT_EQ(type("short", "abcdef"), "abc");
  EXPECT_EQ(type("fixed", "no"), "as it is");
  EXPECT_EQ(type("off", "no"), "as it is");
  EXPECT_EQ(type("secret", "1234"), "1234");
  EXPECT_EQ(view("secret")->accessibilityLabel(), "PIN");
  EXPECT_NE(view("secret")->accessibilityValue(), "1234");
}

TEST_F(Controls, TellWhatScreenReadersSay) {
  show(R"(property Item held: column.children[2]
    Column { id: column
    Button { objectName: "button"; text: "&Save"; ToolTip.text: "Keeps it" }
    Rectangle { id: picture; Accessible.name: "A cat"; Accessible.description: "asleep" }
    Rectangle { width: 9; height: 9 }
    ComboBox { objectName: "choice"; model: ["one", "two"] }
    Slider { objectName: "slider"; to: 10; value: 0.5 }
    Switch { objectName: "bare" }
    Label { objectName: "rich"; text: "<b>fat</b>" }
    ToolButton { objectName: "icon"; ToolTip.text: "Go back" }
    GroupBox { objectName: "group"; title: "Colours" } })");
  EXPECT_EQ(view("button")->accessibilityLabel(), "Save");
  EXPECT_EQ(view("button")->accessibilityHint(), "Keeps it");
  EXPECT_EQ(as<platform::UIButton>(view("button"))->currentTitle(), "Save");
  const UIViewRef picture = view("button")->superview()->subviews()[1];
  EXPECT_EQ(picture->accessibilityIdentifier(), "picture");
  EXPECT_EQ(view("button")->superview()->subviews()[2]->accessibilityIdentifier().value_or(""), "");
  EXPECT_EQ(picture->accessibilityLabel(), "A cat");
  EXPECT_EQ(picture->accessibilityHint(), "asleep");
  EXPECT_EQ(view("choice")->accessibilityValue(), "one");
  EXPECT_EQ(view("slider")->accessibilityValue(), "0.5");
  EXPECT_EQ(view("bare")->accessibilityValue(), "not checked");
  EXPECT_EQ(as<platform::UILabel>(view("rich"))->labelText(), "fat");
  EXPECT_EQ(view("group")->accessibilityLabel(), "Colours");
  EXPECT_EQ(as<platform::UIButton>(view("icon"))->currentTitle(), "Go back");
}

TEST_F(Controls, TellTheProgramOnceWhatIsChosenByItsText) {
  show(R"(Column {
    ComboBox { objectName: "box"; model: ["one", "two"]; property int told; onActivated: ++told }
    SpinBox { objectName: "number"; property int told; onValueModified: ++told }
    Slider { objectName: "slider"; to: 10; property int told; onMoved: ++told } })");
  for (const auto& [name, value] :
       {std::pair("box", "two"), std::pair("number", "7"), std::pair("slider", "4")}) {
    finish(as<platform::UIValueControl>(view(name))->chooseValue(value));
    EXPECT_EQ(object(name)->property("told").toInt(), 1) << name;
  }
}

// A finger that rests for a frame hovers the menu's title, which hid that the menu had closed.
TEST_F(Controls, AMenuOpensAtEachTapHoweverLongTheOneBeforeTook) {
  show(R"(menuBar: MenuBar { hoverEnabled: true
    Menu { objectName: "menu"; title: "File"
      MenuItem { objectName: "new"; text: "New" } } })");
  auto* const menu = object<QObject>("menu");
  const auto isOpen = [menu] { return menu->property("opened").toBool(); };
  const auto title = qt::viewOfItem(menu->property("parent").value<QQuickItem*>());
  const CGRect bounds = title->bounds();
  finish(KIFAdditions::longPressAtPoint(title, {bounds.midX(), bounds.midY()}, 0.2));
  ASSERT_TRUE(runUntil(isOpen));
  finish(KIFAdditions::tap(view("new")));
  ASSERT_TRUE(runUntil([&] { return !isOpen(); }));
  finish(KIFAdditions::tap(title));
  EXPECT_TRUE(runUntil(isOpen));
}

}  // namespace
}  // namespace tarni::test
