// The agent's mouse and keyboard on a scene, items that have no delegate yet, values by their text.
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"
#include "platform/UIKit/UIItems.h"
#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

class Devices : public QuickScreen {
 protected:
  static void choose(const UIViewRef& control, const std::string& value) {
    finish(as<platform::UIValueControl>(control)->chooseValue(value));
  }
  static bool scrollTo(const UIViewRef& list, const std::string& text) {
    std::optional<bool> found;
    finish(storeResult(as<platform::UIItems>(list)->scrollToText(text), found));
    return found.value();
  }
};

TEST_F(Devices, HoverClickTurnAndType) {
  show(R"(Column {
    Button { objectName: "button"; width: 100; height: 40; hoverEnabled: true
      property int clicks; onClicked: ++clicks }
    TextField { objectName: "field"; width: 100; height: 40 }
    ListView { objectName: "list"; width: 100; height: 100; clip: true; model: 100
      delegate: Text { height: 20; text: index } } })");
  auto& devices = *platform::current().inputDevices;
  const auto clickAt = [&](double y) {
    finish(devices.movePointer(root(), {50, y}));
    finish(devices.setButton(platform::PointerButton::Left, true));
    finish(devices.setButton(platform::PointerButton::Left, false));
  };
  clickAt(20);
  EXPECT_TRUE(object("button")->property("hovered").toBool());
  EXPECT_EQ(object("button")->property("clicks").toInt(), 1);
  clickAt(60);
  finish(devices.commitText("Καλη 👋"));
  finish(devices.setKey("Backspace", true));
  EXPECT_EQ(as<platform::UITextField>(view("field"))->text(), "Καλη ");
  finish(devices.movePointer(root(), {50, 120}));
  finish(devices.turnWheel(0, 1));
  EXPECT_TRUE(runUntil([&] { return object("list")->property("contentY").toDouble() > 0; }));
  EXPECT_TRUE(scrollTo(view("list"), "73"));
  EXPECT_FALSE(scrollTo(view("list"), "100"));
}

TEST_F(Devices, ChooseByTextOrSayWhatThereIs) {
  show(R"(Column {
    ComboBox { objectName: "box"; model: ["one", "two"]; property int told: -1
      onActivated: function(index) { told = index } }
    SpinBox { objectName: "number"; from: 1; to: 9; property int told; onValueModified: ++told }
    Slider { objectName: "slider"; from: 0; to: 10; property int told; onMoved: ++told }
    TabBar { objectName: "tabs"; TabButton { text: "&First" } TabButton { text: "Second" } }
    ListView { objectName: "list"; width: 100; height: 60; clip: true
      model: ListModel { id: rows; Component.onCompleted:
        { for (var row = 0; row < 500; ++row) append({"name": "Row " + row}) } }
      delegate: ItemDelegate { height: 20; text: name } } })");
  struct Row {
    const char* control;
    const char* value;
    const char* refused;
  };
  for (const Row& row : {Row{"box", "two", "three"}, Row{"number", "7", "12"},
                         Row{"slider", "4", "x"}, Row{"tabs", "Second", "Third"}}) {
    choose(view(row.control), row.value);
    EXPECT_EQ(as<platform::UIValueControl>(view(row.control))->currentValue(), row.value);
    EXPECT_THROW(choose(view(row.control), row.refused), platform::NSException) << row.control;
  }
  for (const char* const control : {"box", "number", "slider"}) {
    EXPECT_EQ(object(control)->property("told").toInt(), 1) << control;
  }
  EXPECT_EQ(as<platform::UIItems>(view("list"))->numberOfRows(), 500);
  EXPECT_TRUE(scrollTo(view("list"), "Row 400"));
  EXPECT_GT(object("list")->property("contentY").toDouble(), 7000);
  EXPECT_FALSE(scrollTo(view("list"), "Row 500"));
}

}  // namespace
}  // namespace tarni::test
