#include "backends/headless/views/Button.h"
#include "backends/headless/views/Slider.h"
#include "backends/headless/views/TextField.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

class ControlsTest : public TouchScreen {
 protected:
  // Writes the control events down as they come.
  template <typename Kind>
  std::shared_ptr<Kind> watched(std::shared_ptr<Kind> control) {
    const std::pair<std::uint32_t, const char*> names[] = {
        {ControlEvent::TouchDown, "down"},
        {ControlEvent::TouchDragInside, "inside"},
        {ControlEvent::TouchDragOutside, "outside"},
        {ControlEvent::TouchUpInside, "up inside"},
        {ControlEvent::TouchUpOutside, "up outside"},
        {ControlEvent::TouchCancel, "cancel"},
        {ControlEvent::ValueChanged, "changed"},
        {ControlEvent::EditingDidBegin, "begin"},
        {ControlEvent::EditingChanged, "edited"},
        {ControlEvent::EditingDidEnd, "end"}};
    for (const auto& [event, name] : names) {
      control->addAction(event, [this, name = name] { seen.emplace_back(name); });
    }
    return control;
  }

  std::vector<std::string> seen;
};

TEST_F(ControlsTest, AControlFollowsItsFinger) {
  const auto control = watched(build<Control>().frame({{100, 100}, {100, 40}}).in(*window));
  Finger& finger = environment.finger();
  finger.down(*window, {110, 110});
  EXPECT_TRUE(control->isHighlighted());
  finger.moveTo({300, 110});
  EXPECT_FALSE(control->isHighlighted());
  finger.moveTo({120, 110});
  finger.up();
  EXPECT_THAT(seen, testing::ElementsAre("down", "outside", "inside", "up inside"));
  seen.clear();
  finger.drag(*control, {5, 5}, {-3, 5});
  EXPECT_THAT(seen, testing::ElementsAre("down", "outside", "up outside"));
  control->setEnabled(false);
  seen.clear();
  finger.tap(*control);
  EXPECT_TRUE(seen.empty());
  const auto button = watched(build<Button>("OK").frame({{100, 200}, {100, 40}}).in(*window));
  finger.drag(*button, {50, 20}, {50, 100});
  EXPECT_EQ(seen.back(), "up inside") << "a button forgives a finger that slips a little";
  finger.drag(*button, {50, 20}, {50, 120});
  EXPECT_EQ(seen.back(), "up outside");
  const auto slider = build<Slider>(0.5).frame({{0, 0}, {128, 30}}).in(*window);
  finger.drag(*slider, {64, 15}, {39, 15});
  EXPECT_NEAR(slider->value(), 0.25, 1e-9);
  finger.drag(*slider, {39, 15}, {500, 15});
  EXPECT_EQ(slider->value(), 1);
}

TEST_F(ControlsTest, FocusMovesFromFieldToField) {
  const auto panel = plainView({{0, 0}, {200, 200}});
  const auto first = watched(build<TextField>("Name").frame({{0, 0}, {100, 40}}).in(*panel));
  const auto second = build<TextField>().frame({{0, 50}, {100, 40}}).in(*window);
  EXPECT_FALSE(first->type("x")) << "without focus nothing is typed";
  environment.finger().tap(*first);
  ASSERT_TRUE(first->isFirstResponder());
  EXPECT_TRUE(first->type("Ad"));
  EXPECT_TRUE(first->type("a"));
  complete(second->becomeFirstResponder());
  EXPECT_FALSE(first->isFirstResponder());
  EXPECT_EQ(window->firstResponder(), second.get());
  EXPECT_EQ(first->text(), "Ada");
  EXPECT_THAT(seen, testing::ElementsAre("down", "begin", "up inside", "edited", "edited", "end"));
  ASSERT_TRUE(first->focus());
  panel->removeFromSuperview();
  EXPECT_FALSE(first->isFirstResponder());
  EXPECT_EQ(window->firstResponder(), nullptr);
  EXPECT_EQ(seen.back(), "end");
  EXPECT_FALSE(first->focus()) << "without a window there is no focus";
  EXPECT_FALSE(window->focus()) << "a window does not take it";
}

}  // namespace
}  // namespace tarni::headless::test
