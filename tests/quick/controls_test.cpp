// What controls tell and what they do for the agent, and what the program hears of it.

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

TEST_F(Controls, TextIsTypedWholeAndWithoutKeys) {
  show(R"(TextField { id: field; objectName: "field"; placeholderText: "Name"; text: "before"
    property string keys; property int edits; property int accepts
    Keys.onPressed: function(event) { keys += event.text }
    onTextEdited: ++edits
    onAccepted: ++accepts })");
  const std::string text = "A\u00e9 \U0001F9A6";
  EXPECT_EQ(type("field", text), text);
  EXPECT_EQ(object("field")->property("edits").toInt(), 1);
  EXPECT_EQ(as<platform::UITextField>(view("field"))->placeholder(), "Name");
  EXPECT_EQ(type("field", ""), "");
  EXPECT_EQ(object("field")->property("edits").toInt(), 2);
  EXPECT_EQ(object("field")->property("keys").toString(), QString());
  EXPECT_EQ(object("field")->property("accepts").toInt(), 0);
}

TEST_F(Controls, AFieldTakesWhatAPersonCouldType) {
  show(R"(Column {
    TextField { objectName: "digits"; validator: IntValidator { bottom: 0; top: 99 } }
    TextField { objectName: "short"; maximumLength: 3 }
    TextField { objectName: "masked"; inputMask: "99-99"; text: "56-78" }
    SpinBox { editable: true; contentItem: TextInput { objectName: "spun"; text: "5" } }
    TextField { objectName: "fixed"; text: "as it is"; readOnly: true }
    TextField { objectName: "off"; text: "as it is"; enabled: false }
    TextField { objectName: "secret"; echoMode: TextInput.Password; placeholderText: "PIN" } })");
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

TEST_F(Controls, TheFirstResponderIsTheItemWithTheFocus) {
  show(R"(Column { TextField { objectName: "one" } TextField { objectName: "two" }
    Button { objectName: "button" } })");
  EXPECT_TRUE(view("one")->canBecomeFirstResponder());
  EXPECT_FALSE(view("button")->canBecomeFirstResponder());
  finish(view("two")->becomeFirstResponder());
  EXPECT_TRUE(view("two")->isFirstResponder());
  EXPECT_FALSE(view("one")->isFirstResponder());
  finish(view("one")->becomeFirstResponder());
  EXPECT_TRUE(view("one")->isFirstResponder());
  EXPECT_FALSE(view("two")->isFirstResponder());
}

TEST_F(Controls, ASwitchIsToggledAsByAClick) {
  show(R"(Column {
    Switch { objectName: "switch"; property int heard; onToggled: heard += 1; onClicked: heard += 10 }
    CheckBox { objectName: "off"; enabled: false } })");
  const auto heard = [&] { return object("switch")->property("heard").toInt(); };
  const auto toggle = as<platform::UISwitch>(view("switch"));
  finish(toggle->setOn(true));
  EXPECT_TRUE(toggle->isOn());
  EXPECT_EQ(heard(), 11);
  finish(toggle->setOn(true));
  EXPECT_EQ(heard(), 11);
  finish(as<platform::UISwitch>(view("off"))->setOn(true));
  EXPECT_FALSE(as<platform::UISwitch>(view("off"))->isOn());
}

TEST_F(Controls, PartsThatDoThingsOfTheirOwnAreButtons) {
  show(R"(Column {
    SpinBox { objectName: "spin" }
    ComboBox { objectName: "words"; editable: true; model: ["red", "green"] }
    ComboBox { objectName: "plain"; model: ["red", "green"] }
    Slider { objectName: "slider" } })");
  const auto part = [this](const char* control, const std::string& title) -> UIViewRef {
    for (const UIViewRef& child : view(control)->subviews()) {
      const auto button = as<platform::UIButton>(child);
      if (button && button->currentTitle() == title) return child;
    }
    return nullptr;
  };
  ASSERT_TRUE(part("spin", "Increase") && part("spin", "Decrease"));
  finish(KIFAdditions::tap(part("spin", "Increase")));
  finish(KIFAdditions::tap(part("spin", "Increase")));
  finish(KIFAdditions::tap(part("spin", "Decrease")));
  EXPECT_EQ(object("spin")->property("value").toInt(), 1);
  ASSERT_TRUE(part("words", "Open"));
  finish(KIFAdditions::tap(part("words", "Open")));
  EXPECT_TRUE(object("words")->property("popup").value<QObject*>()->property("visible").toBool());
  EXPECT_EQ(part("plain", "Open"), nullptr);
  const CGRect slider = view("slider")->bounds();
  const CGPoint end = view("slider")->convertPointToWindow({slider.maxX() - 5, slider.midY()});
  object("words")->property("popup").value<QObject*>()->setProperty("visible", false);
  ASSERT_TRUE(runUntil([&] { return root()->hitTest(end) == part("slider", "Handle"); }));
}

TEST_F(Controls, AFlickableScrollsAsFarAsThereIsContent) {
  show(R"(Flickable { objectName: "area"; width: 100; height: 100; contentWidth: 100
    contentHeight: 250; topMargin: 10 })");
  const auto area = as<platform::UIScrollView>(view("area"));
  finish(area->setContentOffset({0, 60}, false));
  EXPECT_EQ(area->contentOffset(), (CGPoint{0, 60}));
  finish(area->setContentOffset({40, 1000}, false));
  EXPECT_EQ(area->contentOffset(), (CGPoint{0, 150}));
  finish(area->setContentOffset({0, -1000}, false));
  EXPECT_EQ(area->contentOffset(), (CGPoint{0, -10}));
}

TEST_F(Controls, ADragMovesAListAndATapPressesWhatIsInIt) {
  show(R"(ListView { id: list; objectName: "list"; width: 200; height: 200; model: 50
    property string pressed
    delegate: ItemDelegate { width: 200; height: 40; text: "Row " + index
      onClicked: list.pressed += text } })");
  const auto pressed = [&] { return object("list")->property("pressed").toString().toStdString(); };
  finish(KIFAdditions::tapAtPoint(root(), {100, 60}));
  ASSERT_TRUE(runUntil([&] { return pressed() == "Row 1"; }));
  finish(KIFAdditions::dragFromPoint(root(), {100, 150}, {100, 40}));
  const auto list = as<platform::UIScrollView>(view("list"));
  EXPECT_TRUE(runUntil([&] { return list->contentOffset().y > 60; })) << list->contentOffset().y;
  EXPECT_EQ(pressed(), "Row 1");
}

TEST_F(Controls, TellWhatScreenReadersSay) {
  show(R"(Column {
    Button { objectName: "button"; text: "&Save"; ToolTip.text: "Keeps it" }
    Rectangle { id: picture; Accessible.name: "A cat"; Accessible.description: "asleep" }
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
  EXPECT_EQ(picture->accessibilityLabel(), "A cat");
  EXPECT_EQ(picture->accessibilityHint(), "asleep");
  EXPECT_EQ(view("choice")->accessibilityValue(), "one");
  EXPECT_EQ(view("slider")->accessibilityValue(), "0.5");
  EXPECT_EQ(view("bare")->accessibilityValue(), "not checked");
  EXPECT_EQ(as<platform::UILabel>(view("rich"))->labelText(), "fat");
  EXPECT_EQ(view("group")->accessibilityLabel(), "Colours");
  EXPECT_EQ(as<platform::UIButton>(view("icon"))->currentTitle(), "Go back");
}

}  // namespace
}  // namespace tarni::test
