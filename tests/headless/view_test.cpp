#include <numbers>

#include "backends/headless/views/Label.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

using platform::CGAffineTransform;

class ViewTest : public TouchScreen {};

TEST_F(ViewTest, TheFrameFollowsFromCentreBoundsAndTransform) {
  const auto view = plainView({{20, 40}, {100, 60}});
  EXPECT_EQ(view->center(), (CGPoint{70, 70}));
  EXPECT_EQ(view->bounds(), (CGRect{{0, 0}, {100, 60}}));

  view->setTransform(CGAffineTransform::scale(2, 0.5));
  EXPECT_EQ(view->frame(), (CGRect{{-30, 55}, {200, 30}}));
  EXPECT_EQ(view->bounds(), (CGRect{{0, 0}, {100, 60}}));

  view->setTransform(CGAffineTransform::rotation(std::numbers::pi / 2));
  expectNear(view->frame().origin, {40, 20});
  EXPECT_NEAR(view->frame().size.width, 60, 1e-9);

  view->setTransform({});
  view->setBounds({{5, 5}, {10, 10}});
  EXPECT_EQ(view->frame(), (CGRect{{65, 65}, {10, 10}})) << "bounds grow about the centre";
  view->setTransform(CGAffineTransform::scale(2, 4));
  view->setFrame({{10, 20}, {40, 40}});
  EXPECT_EQ(view->frame(), (CGRect{{10, 20}, {40, 40}}));
  EXPECT_EQ(view->bounds().size, (platform::CGSize{20, 10}));
}

TEST_F(ViewTest, HitTestGivesTheDeepestFrontViewWhereItIsTransformed) {
  const auto back = plainView({{0, 0}, {100, 100}});
  const auto front = plainView({{50, 50}, {100, 100}});
  const auto inFront = plainView({{0, 0}, {20, 20}}, *front);
  EXPECT_EQ(window->hitTest({10, 10}), back);
  EXPECT_EQ(window->hitTest({60, 60}), inFront);
  EXPECT_EQ(window->hitTest({90, 90}), front);
  EXPECT_EQ(window->hitTest({150, 150}), window) << "right and bottom edges are outside";
  EXPECT_EQ(window->hitTest({-100, -200}), nullptr);
  front->setTransform(CGAffineTransform::rotation(std::numbers::pi));
  EXPECT_EQ(window->hitTest({60, 60}), front);
  EXPECT_EQ(window->hitTest({140, 140}), inFront);
}

TEST_F(ViewTest, HitTestPassesOverViewsThatTakeNoTouches) {
  const auto back = plainView({{0, 0}, {100, 100}});
  const auto cover = plainView({{0, 0}, {100, 100}});
  const auto below = plainView({{0, 0}, {100, 100}}, *cover);
  EXPECT_EQ(window->hitTest({10, 10}), below);
  cover->setUserInteractionEnabled(false);
  EXPECT_EQ(window->hitTest({10, 10}), back) << "neither the view nor what is in it";
  cover->setUserInteractionEnabled(true);
  cover->setHidden(true);
  EXPECT_EQ(window->hitTest({10, 10}), back);
  cover->setHidden(false);
  cover->setAlpha(0.009);
  EXPECT_EQ(window->hitTest({10, 10}), back);
  cover->setAlpha(0.01);
  EXPECT_EQ(window->hitTest({10, 10}), below);
  below->setFrame({{50, 0}, {100, 100}});
  EXPECT_EQ(window->hitTest({120, 10}), window) << "outside of its superview nothing is hit";
  const auto label = build<Label>("text").frame({{0, 0}, {100, 100}}).in(*back);
  cover->removeFromSuperview();
  EXPECT_EQ(window->hitTest({10, 10}), back) << "labels take none";
}

TEST_F(ViewTest, DeepTreesAreMovedHitAndDestroyed) {
  constexpr int kDepth = 200'000;
  auto top = std::make_shared<View>();
  top->setFrame({{0, 0}, {10, 10}});
  ViewRef deepest = top;
  for (int level = 0; level < kDepth; ++level) deepest = plainView({{0, 0}, {10, 10}}, *deepest);
  window->addSubview(top);
  EXPECT_EQ(deepest->window(), window);
  EXPECT_EQ(window->hitTest({5, 5}), deepest);
  const std::weak_ptr<View> gone = deepest;
  deepest.reset();
  top->removeFromSuperview();
  top.reset();
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace tarni::headless::test
