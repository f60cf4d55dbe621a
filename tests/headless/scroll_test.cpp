#include "backends/headless/views/Button.h"
#include "backends/headless/views/ScrollView.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

class ScrollTest : public TouchScreen {
 protected:
  ScrollTest() { scroll->setContentSize({200, 1000}); }

  std::shared_ptr<ScrollView> scroll = build<ScrollView>().frame({{0, 0}, {200, 300}}).in(*window);
};

TEST_F(ScrollTest, TheContentFollowsTheFingerAndStopsAtItsEdges) {
  int scrolls = 0;
  scroll->onScroll([&] { ++scrolls; });
  environment.finger().drag(*scroll, {100, 200}, {100, 192});
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 0})) << "not before ten points";
  environment.finger().drag(*scroll, {100, 200}, {100, 120});
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 80}));
  EXPECT_EQ(scroll->bounds().origin, (CGPoint{0, 80}));
  EXPECT_GT(scrolls, 1) << "step by step";
  environment.finger().drag(*scroll, {100, 100}, {30, 250});
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 0}));
  scroll->scrollTo({0, 650});
  environment.finger().drag(*scroll, {100, 850}, {30, 700});
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 700}));
}

TEST_F(ScrollTest, ADragOnAButtonScrollsAndATapPressesIt) {
  int taps = 0;
  const auto button = build<Button>("OK").frame({{0, 100}, {100, 40}}).in(*scroll);
  button->onTap([&] { ++taps; });
  environment.finger().drag(*button, {50, 20}, {50, -10});
  EXPECT_EQ(taps, 0);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 30}));
  environment.finger().tap(*button);
  EXPECT_EQ(taps, 1);
}

TEST_F(ScrollTest, TheInnerOfTwoScrollsAndADisabledOneDoesNot) {
  const auto inner = build<ScrollView>().frame({{0, 0}, {200, 100}}).in(*scroll);
  inner->setContentSize({200, 500});
  environment.finger().drag(*inner, {100, 80}, {100, 40});
  EXPECT_EQ(inner->contentOffset(), (CGPoint{0, 40}));
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 0}));
  inner->setScrollEnabled(false);
  environment.finger().drag(*inner, {100, 120}, {100, 80});
  EXPECT_EQ(inner->contentOffset(), (CGPoint{0, 40}));
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 40})) << "the next one outside does";
  inner->setScrollEnabled(true);
  inner->setContentSize({500, 100});
  inner->scrollTo({0, 0});
  environment.finger().drag(*inner, {100, 80}, {100, 60});
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 60})) << "its own content fits";
  environment.finger().drag(*inner, {100, 60}, {60, 60});
  EXPECT_EQ(inner->contentOffset(), (CGPoint{40, 0}));
}

}  // namespace
}  // namespace tarni::headless::test
