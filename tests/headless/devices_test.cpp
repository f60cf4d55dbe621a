// The agent's pointer and keyboard act on the application, and "sendEvent:" hears nothing of it.
#include "backends/headless/views/Button.h"
#include "backends/headless/views/PickerView.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/Slider.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/TextView.h"
#include "platform/Foundation/NSException.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

using platform::PointerButton;

class DevicesTest : public TouchScreen {
 protected:
  void SetUp() override {
    environment.runtime().class_replaceMethod(
        platform::uikit::UIApplication,
        "sendEvent:", [](const auto&) { ADD_FAILURE() << "shown as a person's"; }, "v@:@");
  }
  void press(const char* key) {
    complete(devices.setKey(key, true));
    complete(devices.setKey(key, false));
  }
  void click(CGPoint point) {
    complete(devices.movePointer(window, point));
    complete(devices.setButton(PointerButton::Left, true));
    complete(devices.setButton(PointerButton::Left, false));
  }

  platform::InputDevices& devices = *platform::current().inputDevices;
};

TEST_F(DevicesTest, ThePointerTapsDragsAndScrolls) {
  int taps = 0;
  const auto button = build<Button>("Press").frame({{0, 0}, {100, 40}}).in(*window);
  button->onTap([&] { ++taps; });
  const auto table = build<TableView>().frame({{0, 50}, {200, 200}}).in(*window);
  table->setRows(std::vector<std::string>(100, "row"));
  click({10, 10});
  click({10, 10});
  EXPECT_EQ(taps, 2);
  complete(devices.movePointer(window, {50, 200}));
  complete(devices.turnWheel(0, 2));
  EXPECT_EQ(table->contentOffset().y, 80);
  complete(devices.setButton(PointerButton::Left, true));
  for (const double y : {180, 160, 140}) complete(devices.movePointer(window, {50, y}));
  complete(devices.setButton(PointerButton::Left, false));
  EXPECT_EQ(table->contentOffset().y, 140);
  EXPECT_THROW(complete(devices.setButton(PointerButton::Right, true)), platform::NSException);
}

TEST_F(DevicesTest, TheKeyboardTypesIntoWhatHasTheFocus) {
  const auto field = build<TextField>().frame({{0, 0}, {100, 40}}).in(*window);
  const auto editor = build<TextView>().frame({{0, 50}, {100, 100}}).in(*window);
  EXPECT_THROW(complete(devices.commitText("x")), platform::NSException) << "no focus";
  click({10, 10});
  complete(devices.commitText("Καλη 👋"));
  for (const char* const key : {"Backspace", "Enter", "ж", "F2", "a"}) press(key);
  complete(devices.setKey("Shift", true));
  press("b");
  complete(devices.setKey("Shift", false));
  complete(devices.setKey("Control", true));
  press("c");  // a shortcut is no text
  complete(devices.setKey("Control", false));
  EXPECT_EQ(field->text(), "Καλη жaB");
  click({10, 60});
  for (const char* const key : {"x", "Enter", "y"}) press(key);
  EXPECT_EQ(editor->textViewText(), "x\ny");
  complete(devices.setKey("Control", true));
  press("a");
  complete(devices.setKey("Control", false));
  complete(devices.commitText("new"));
  EXPECT_EQ(editor->textViewText(), "new");
  for (const char* const key : {"", "NoSuchKey", "F0", "\n"}) {
    EXPECT_THROW(press(key), platform::NSException) << key;
  }
}

TEST_F(DevicesTest, ItemsWithoutACellAndValuesAreChosenByTheirText) {
  const auto table = build<TableView>().frame({{0, 50}, {200, 200}}).in(*window);
  std::vector<std::string> rows;
  for (int row = 0; row < 1000; ++row) rows.push_back("row " + std::to_string(row));
  table->setRows(rows);
  EXPECT_TRUE(complete(table->scrollToText("row 700")));
  const auto cell = table->cellForItem(700);
  ASSERT_TRUE(cell);
  EXPECT_EQ(platform::as<platform::UIItemCell>(cell)->place().row, 700);
  EXPECT_FALSE(complete(table->scrollToText("row 1000")));

  const auto segments = build<SegmentedControl>(std::vector<std::optional<std::string>>{"a", "b"})
                            .frame({{0, 0}, {100, 30}})
                            .in(*window);
  const auto slider = build<Slider>().frame({{0, 300}, {100, 30}}).in(*window);
  const auto picker = build<PickerColumnView>(std::vector<std::string>{"a", "b"})
                          .frame({{0, 350}, {100, 30}})
                          .in(*window);
  int changes = 0;
  segments->onChange([&] { ++changes; });
  slider->onChange([&] { ++changes; });
  for (const auto& [control, value] : std::vector<std::pair<platform::UIViewRef, std::string>>{
           {segments, "b"}, {slider, "0.5"}, {picker, "b"}}) {
    const auto chosen = platform::as<platform::UIValueControl>(control);
    complete(chosen->chooseValue(value));
    EXPECT_EQ(chosen->currentValue(), value);
    EXPECT_THROW(complete(chosen->chooseValue("none")), platform::NSException);
  }
  EXPECT_EQ(changes, 2);
}

TEST_F(DevicesTest, TheLoopSaysWhatItDidBetweenItsSleeps) {
  struct Log : platform::RunLoopObserver {
    void didWake() noexcept override {}
    void willWait(std::string_view beganWith) noexcept override { began.emplace_back(beganWith); }
    std::vector<std::string> began;
  } log;
  environment.processInfo().setVirtual(false);
  RunLoop& loop = environment.runLoop();
  environment.application().setRunLoopObserver(&log);
  loop.after(0.01, [&] { environment.dispatch().mainQueue().async([] {}); });
  environment.dispatch().mainQueue().async([] {});
  loop.runUntil([] { return false; }, 0.05);
  environment.application().setRunLoopObserver(nullptr);
  EXPECT_THAT(log.began, testing::ElementsAre(platform::kMainQueueAlone, "timer"));
}

}  // namespace
}  // namespace tarni::headless::test
