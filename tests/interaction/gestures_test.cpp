#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "agent/interaction/UIView_KIFAdditions.h"
#include "backends/headless/views/WebView.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using headless::build;
using headless::LoggedEvent;
using platform::CGPoint;
using test::complete;

void expectNear(CGPoint actual, CGPoint expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

class Gestures : public test::Screen {
 protected:
  const std::deque<LoggedEvent>& events() { return environment.application().eventLog().events(); }
  std::string phases() { return environment.application().eventLog().phases(); }

  // Where a finger was in each event of a gesture in which all fingers stay until the end.
  std::vector<CGPoint> pathOfFinger(std::size_t finger, std::size_t steps) {
    std::vector<CGPoint> path;
    for (std::size_t step = 0; step < steps; ++step) {
      path.push_back(events().at(step).touches.at(finger).locationInWindow);
    }
    return path;
  }

  // At (100, 200) in the window, so that both coordinate systems differ.
  headless::ViewRef view = plainView({{100, 200}, {200, 100}});
};

TEST_F(Gestures, TapGoesThroughTheViewsTransform) {
  view->setTransform(platform::CGAffineTransform::rotation(std::numbers::pi / 2));
  complete(KIFAdditions::tapAtPoint(view, {10, 0}));
  // The centre of the view is at (200, 250); its own (10, 0) lies 90 left of and 50 above it.
  expectNear(events().at(0).touches.at(0).locationInWindow, {250, 160});
}

TEST_F(Gestures, OnlyThoseThatMeetTheFieldGiveItTheFocus) {
  const auto field = build<headless::View>().frame({{10, 10}, {100, 30}}).in(*view);
  field->setCanBecomeFirstResponder(true);
  const auto label = build<headless::View>().frame({{0, 0}, {50, 30}}).in(*field);
  const auto getsFocus = [&](platform::Task<void> gesture) {
    field->resignFirstResponder();
    complete(std::move(gesture));
    return field->isFirstResponder();
  };
  EXPECT_TRUE(getsFocus(KIFAdditions::tapAtPoint(field, {5, 5})));
  EXPECT_EQ(events().at(0).touches.at(0).view.lock(), label);
  EXPECT_FALSE(getsFocus(KIFAdditions::FaketapAtPoint(field, {5, 5})));
  EXPECT_TRUE(getsFocus(KIFAdditions::longPressAtPoint(field, {60, 5}, 0.01)));
  EXPECT_TRUE(getsFocus(KIFAdditions::dragFromPoint(field, {60, 10}, {70, 10})));
  build<headless::View>().frame({{0, 0}, {50, 100}}).in(*view);
  EXPECT_FALSE(getsFocus(KIFAdditions::tapAtPoint(field, {5, 5}))) << "another view lies over it";
  EXPECT_FALSE(getsFocus(KIFAdditions::dragFromPoint(field, {5, 5}, {60, 10})));
}

TEST_F(Gestures, WebViewsTakeTapsByThemselves) {
  const auto web = build<headless::WebView>().frame({{0, 0}, {200, 100}}).in(*view);
  complete(KIFAdditions::tapAtPoint(web, {30, 40}));
  complete(KIFAdditions::FaketapAtPoint(web, {3, 4}));
  complete(KIFAdditions::tapWebViewAtPoint(web, {5, 6}));
  EXPECT_THAT(web->browserView()->taps(),
              testing::ElementsAre(CGPoint{30, 40}, CGPoint{3, 4}, CGPoint{5, 6}));
  EXPECT_EQ(phases(), "");
}

TEST_F(Gestures, LongPressRepeatsStationaryEveryHundredthOfASecond) {
  view->setCanBecomeFirstResponder(true);
  complete(KIFAdditions::longPressAtPoint(view, {10, 10}, 0.05));
  EXPECT_EQ(phases(), "Began Stationary Stationary Stationary Stationary Ended");
  const auto& runs = environment.application().runLoopRuns();
  ASSERT_EQ(runs.size(), 5U);
  for (const headless::RunLoopRun& run : runs) {
    EXPECT_EQ(run.mode, "kCFRunLoopDefaultMode");
    EXPECT_EQ(run.seconds, 0.01);
  }
  EXPECT_TRUE(view->isFirstResponder());
}

TEST_F(Gestures, PathsThatDoNotMatchTouchNothing) {
  using Paths = std::vector<KIFAdditions::Path>;
  for (const Paths& paths : {Paths{}, Paths{{}}, Paths{{{1, 1}, {2, 2}}, {{3, 3}}}}) {
    complete(KIFAdditions::dragPointsAlongPaths(view, paths));
  }
  EXPECT_EQ(phases(), "");
}

TEST_F(Gestures, OfTwoFingersKeepThemApartOrMoveThemTogether) {
  const auto paths = [&](platform::Task<void> gesture) {
    environment.application().eventLog().clear();
    complete(std::move(gesture));
    return std::pair(pathOfFinger(0, 2), pathOfFinger(1, 2));
  };
  using Paths = std::pair<std::vector<CGPoint>, std::vector<CGPoint>>;
  EXPECT_EQ(paths(KIFAdditions::twoFingerPanFromPoint(view, {50, 50}, {90, 50}, 2)),
            (Paths{{{110, 210}, {150, 210}}, {{190, 290}, {230, 290}}}));
  EXPECT_EQ(paths(KIFAdditions::pinchAtPoint(view, {100, 50}, 30, 2)),
            (Paths{{{130, 250}, {160, 250}}, {{270, 250}, {240, 250}}}));
  EXPECT_EQ(paths(KIFAdditions::zoomAtPoint(view, {100, 50}, 30, 2)),
            (Paths{{{160, 250}, {130, 250}}, {{240, 250}, {270, 250}}}));
  EXPECT_EQ(paths(KIFAdditions::twoFingerTapAtPoint(view, {100, 50})),
            (Paths{{{160, 210}, {160, 210}}, {{240, 290}, {240, 290}}}));
}

TEST_F(Gestures, RotationJumpsToTheWholeAngleAtItsEnd) {
  complete(KIFAdditions::twoFingerRotateAtPoint(view, {100, 50}, -90));
  constexpr std::size_t kSteps = 45;
  ASSERT_EQ(events().size(), kSteps + 2);
  const auto at = [](double degrees, double side) {
    const double radians = degrees * std::numbers::pi / 180;
    return CGPoint{200 + side * 80 * std::cos(radians), 250 + side * 80 * std::sin(radians)};
  };
  expectNear(pathOfFinger(0, kSteps).front(), at(0, 1));
  expectNear(pathOfFinger(0, kSteps)[43], at(-90.0 * 43 / 45, 1));
  expectNear(pathOfFinger(0, kSteps)[44], at(-90, 1));
  expectNear(pathOfFinger(1, kSteps)[43], at(-90.0 * 43 / 45, -1));
}

}  // namespace
}  // namespace tarni
