#include "backends/headless/views/Bars.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/Slider.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/TextView.h"
#include "backends/headless/views/WebView.h"
#include "platform/Foundation/NSException.h"
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
}

TEST_F(ControlsTest, AButtonForgivesAFingerThatSlipsALittle) {
  const auto button = watched(build<Button>("OK").frame({{100, 100}, {100, 40}}).in(*window));
  environment.finger().drag(*button, {50, 20}, {50, 100});
  EXPECT_EQ(seen.back(), "up inside");
  environment.finger().drag(*button, {50, 20}, {50, 120});
  EXPECT_EQ(seen.back(), "up outside");
}

TEST_F(ControlsTest, ADisabledControlSwallowsTouches) {
  int above = 0;
  const auto outer = build<Control>().frame({{0, 0}, {200, 200}}).in(*window);
  outer->onTap([&] { ++above; });
  const auto control = watched(build<Control>().frame({{0, 0}, {100, 100}}).in(*outer));
  control->setEnabled(false);
  environment.finger().tap(*control);
  EXPECT_TRUE(seen.empty());
  EXPECT_EQ(above, 0);
}

TEST_F(ControlsTest, AViewsTouchesGoUpToTheControlItStandsIn) {
  const auto button = watched(build<Button>("OK").frame({{0, 0}, {100, 40}}).in(*window));
  const auto decoration = plainView({{0, 0}, {100, 40}}, *button);
  environment.finger().tap(*decoration);
  EXPECT_THAT(seen, testing::ElementsAre("down", "up inside"));
}

TEST_F(ControlsTest, AnActionMayRemoveItsControl) {
  auto button = build<Button>("OK").frame({{0, 0}, {100, 40}}).in(*window);
  button->onTap([view = std::weak_ptr(button)] { view.lock()->removeFromSuperview(); });
  button->onTap([this] { seen.emplace_back("second"); });
  const std::weak_ptr<Button> gone = button;
  const Button& tapped = *std::exchange(button, nullptr);
  environment.finger().tap(tapped);
  EXPECT_THAT(seen, testing::ElementsAre("second"));
  EXPECT_TRUE(gone.expired());
}

TEST_F(ControlsTest, AButtonsTitleStandsInALabelOfItsOwn) {
  const auto button = build<Button>().frame({{0, 0}, {100, 40}}).in(*window);
  EXPECT_EQ(button->currentTitle(), std::nullopt);
  EXPECT_TRUE(button->subviews().empty());
  button->setTitle("Go");
  ASSERT_EQ(button->subviews().size(), 1U);
  EXPECT_EQ(button->subviews()[0]->getClass()->name(), "UIButtonLabel");
  EXPECT_EQ(platform::as<platform::UILabel>(button->subviews()[0])->labelText(), "Go");
  EXPECT_EQ(window->hitTest({50, 20}), button);
}

TEST_F(ControlsTest, ASwitchTurnsByATapAndQuietlyByTheAgent) {
  const auto toggle = watched(build<Switch>().in(*window));
  environment.finger().tap(*toggle);
  EXPECT_TRUE(toggle->isOn());
  EXPECT_THAT(seen, testing::ElementsAre("down", "changed", "up inside"));
  seen.clear();
  complete(toggle->setOn(false));
  EXPECT_FALSE(toggle->isOn());
  EXPECT_TRUE(seen.empty());
}

TEST_F(ControlsTest, ASegmentIsChosenByItsPlace) {
  const auto control = watched(
      build<SegmentedControl>(std::vector<std::optional<std::string>>{"A", std::nullopt, "C"})
          .frame({{0, 0}, {300, 30}})
          .in(*window));
  EXPECT_EQ(control->selectedSegmentIndex(), -1);
  ASSERT_EQ(control->subviews().size(), 3U);
  EXPECT_EQ(control->subviews()[0]->getClass()->name(), "UISegment");
  environment.finger().tap(control->child(2));
  EXPECT_EQ(control->selectedSegmentIndex(), 2);
  EXPECT_EQ(control->titleForSegmentAtIndex(1), std::nullopt);
  environment.finger().tap(control->child(2));
  EXPECT_EQ(std::ranges::count(seen, "changed"), 1) << "a chosen segment does not change";
  EXPECT_THROW(static_cast<void>(control->titleForSegmentAtIndex(3)), platform::NSException);
  EXPECT_THROW(static_cast<void>(control->titleForSegmentAtIndex(-1)), platform::NSException);
}

TEST_F(ControlsTest, ASliderFollowsTheFinger) {
  const auto slider = build<Slider>(0.5).frame({{0, 0}, {128, 30}}).in(*window);
  environment.finger().drag(*slider, {64, 15}, {39, 15});
  EXPECT_NEAR(slider->value(), 0.25, 1e-9);
  environment.finger().drag(*slider, {39, 15}, {500, 15});
  EXPECT_EQ(slider->value(), 1);
}

TEST_F(ControlsTest, FocusMovesFromFieldToField) {
  const auto first = watched(build<TextField>("Name").frame({{0, 0}, {100, 40}}).in(*window));
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
}

TEST_F(ControlsTest, AFieldThatLeavesTheWindowLosesFocus) {
  const auto panel = plainView({{0, 0}, {200, 200}});
  const auto field = watched(build<TextField>().frame({{0, 0}, {100, 40}}).in(*panel));
  ASSERT_TRUE(field->focus());
  panel->removeFromSuperview();
  EXPECT_FALSE(field->isFirstResponder());
  EXPECT_EQ(window->firstResponder(), nullptr);
  EXPECT_THAT(seen, testing::ElementsAre("begin", "end"));
  EXPECT_FALSE(field->focus()) << "without a window there is no focus";
  EXPECT_FALSE(window->focus()) << "a window does not take it";
}

TEST_F(ControlsTest, NavigationBarsHoldPrivateViews) {
  const auto bar = build<NavigationBar>("Title").frame({{0, 0}, {390, 44}}).in(*window);
  int back = 0;
  const auto button = bar->setBackButton("Back", [&] { ++back; });
  EXPECT_EQ(bar->itemView()->getClass()->name(), "UINavigationItemView");
  EXPECT_EQ(bar->backIndicator()->getClass()->name(), "_UINavigationBarBackIndicatorView");
  EXPECT_EQ(button->getClass()->name(), "UINavigationButton");
  EXPECT_EQ(window->hitTest({195, 22}), bar) << "the title leaves its touches to the bar";
  environment.finger().tap(*button);
  environment.finger().tap(*bar->backIndicator());
  EXPECT_EQ(back, 2);
}

TEST_F(ControlsTest, AWebViewsBrowserViewIsReachedByKeysAndByTouches) {
  const auto web = build<WebView>().frame({{0, 0}, {200, 200}}).in(*window);
  const auto browser = web->valueForKey("_internal")->valueForKey("browserView");
  EXPECT_EQ(browser, web->browserView());
  EXPECT_EQ(web->instanceVariable("_internal")->instanceVariable("browserView"), browser);
  EXPECT_EQ(window->hitTest({100, 100}), browser);
  complete(platform::as<platform::UIWebBrowserView>(browser)->tapInteractionWithLocation({3, 4}));
  EXPECT_THAT(web->browserView()->taps(), testing::ElementsAre(CGPoint{3, 4}));
}

}  // namespace
}  // namespace tarni::headless::test
