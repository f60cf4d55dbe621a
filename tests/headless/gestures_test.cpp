
#include "backends/headless/events/GestureRecognizer.h"
#include "backends/headless/views/Control.h"
#include "backends/headless/views/TableView.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

class GesturesTest : public TouchScreen {
 protected:
  template <typename Kind, typename... Arguments>
  std::shared_ptr<Kind> recognizer(View& view, Arguments... arguments) {
    const auto made = std::make_shared<Kind>([this] { ++calls; }, arguments...);
    view.addGestureRecognizer(made);
    return made;
  }

  ViewRef view = plainView({{0, 0}, {300, 300}});
  int calls = 0;
};

TEST_F(GesturesTest, ATapIsShortStillAndOfOneFinger) {
  const auto tap = recognizer<TapGestureRecognizer>(*view);
  EXPECT_THAT(view->gestureRecognizers(),
              testing::ElementsAre(platform::uikit::UITapGestureRecognizer));
  environment.finger().tap(*view);
  EXPECT_EQ(calls, 1);
  environment.finger().drag(*view, {100, 100}, {100, 109});
  EXPECT_EQ(calls, 2) << "a little movement is allowed";
  environment.finger().drag(*view, {100, 100}, {100, 111});
  EXPECT_EQ(calls, 2);
  environment.finger().down(*window, {100, 100});
  environment.runLoop().wait(2);
  environment.finger().up();
  EXPECT_EQ(calls, 2);
  view->removeGestureRecognizer(tap);
  environment.finger().tap(*view);
  EXPECT_EQ(calls, 2);
  EXPECT_TRUE(view->gestureRecognizers().empty());
}

TEST_F(GesturesTest, AControlKeepsItsTapFromItsSuperviewAndLosesItsTouchToAPan) {
  recognizer<TapGestureRecognizer>(*view);
  int taps = 0;
  int cancelled = 0;
  const auto control = build<Control>().frame({{0, 0}, {200, 200}}).in(*view);
  control->addAction(ControlEvent::TouchCancel, [&] { ++cancelled; });
  control->onTap([&] { ++taps; });
  environment.finger().tap(*control);
  EXPECT_EQ(taps, 1);
  EXPECT_EQ(calls, 0);
  send(UITouchPhase::Began, {touchAt({250, 50})});  // never ends
  environment.finger().tap(*plainView({{210, 0}, {50, 50}}, *view));
  EXPECT_EQ(calls, 1) << "a finger that vanished is forgotten";
  const auto pan = recognizer<PanGestureRecognizer>(*view);
  environment.finger().drag(*control, {20, 20}, {60, 20});
  EXPECT_EQ(cancelled, 1);
  EXPECT_EQ(taps, 1);
  EXPECT_EQ(pan->state(), GestureRecognizer::State::Ended);
  EXPECT_FALSE(control->isHighlighted());
}

TEST_F(GesturesTest, TheWheelTurnedDownShowsWhatIsBelow) {
  const auto table = build<TableView>().frame({{0, 50}, {200, 200}}).in(*window);
  table->setRows(std::vector<std::string>(100, "row"));
  complete(platform::current().inputDevices->movePointer(window, {50, 200}));
  complete(platform::current().inputDevices->turnWheel(0, 2));
  EXPECT_EQ(table->contentOffset().y, 80);
}

}  // namespace
}  // namespace tarni::headless::test
