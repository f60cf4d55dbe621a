#include <numbers>

#include "backends/headless/views/Label.h"
#include "backends/headless/views/ScrollView.h"
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
}

TEST_F(ViewTest, AFrameSetUnderATransformIsTheFrame) {
  const auto view = plainView({{0, 0}, {10, 10}});
  view->setTransform(CGAffineTransform::scale(2, 4));
  view->setFrame({{10, 20}, {40, 40}});
  EXPECT_EQ(view->frame(), (CGRect{{10, 20}, {40, 40}}));
  EXPECT_EQ(view->bounds().size, (platform::CGSize{20, 10}));
}

TEST_F(ViewTest, ConvertsThroughScrollOffsetsAndTransforms) {
  const auto scroll = build<ScrollView>().frame({{10, 100}, {200, 200}}).in(*window);
  const auto inner = plainView({{20, 300}, {100, 50}}, *scroll);
  scroll->scrollTo({0, 250});
  EXPECT_EQ(inner->convertPointToWindow({1, 2}), (CGPoint{31, 152}));
  EXPECT_EQ(inner->convertPointFromWindow({31, 152}), (CGPoint{1, 2}));

  scroll->setTransform(CGAffineTransform::rotation(0.3).then(CGAffineTransform::scale(1.5, 0.7)));
  inner->setTransform(CGAffineTransform::rotation(-1.1));
  expectNear(inner->convertPointFromWindow(inner->convertPointToWindow({7, 9})), {7, 9});
  expectNear(inner->convertPointToWindow({7, 9}),
             scroll->convertPointToWindow(inner->convertPointToSuperview({7, 9})));
}

TEST_F(ViewTest, TheWindowsOwnPlaceOnTheScreenIsNotItsContents) {
  const auto second = std::make_shared<Window>(CGRect{{100, 200}, {50, 50}});
  second->makeKeyAndVisible(environment.application());
  const auto inside = plainView({{5, 5}, {10, 10}}, *second);
  EXPECT_EQ(inside->convertPointToWindow({0, 0}), (CGPoint{5, 5}));
  EXPECT_EQ(platform::convertPoint({0, 0}, inside, window), (CGPoint{105, 205}));
}

TEST_F(ViewTest, HitTestGivesTheDeepestFrontView) {
  const auto back = plainView({{0, 0}, {100, 100}});
  const auto front = plainView({{50, 50}, {100, 100}});
  const auto inFront = plainView({{0, 0}, {20, 20}}, *front);
  EXPECT_EQ(window->hitTest({10, 10}), back);
  EXPECT_EQ(window->hitTest({60, 60}), inFront);
  EXPECT_EQ(window->hitTest({90, 90}), front);
  EXPECT_EQ(window->hitTest({150, 150}), window) << "right and bottom edges are outside";
  EXPECT_EQ(window->hitTest({-100, -200}), nullptr);
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

TEST_F(ViewTest, HitTestFollowsTransforms) {
  const auto view = plainView({{100, 100}, {100, 20}});
  view->setTransform(CGAffineTransform::rotation(std::numbers::pi / 2));
  EXPECT_EQ(window->hitTest({150, 150}), view);
  EXPECT_EQ(window->hitTest({110, 110}), window);
}

TEST_F(ViewTest, TheTreeKeepsOrderAndOwnership) {
  const auto parent = plainView({{0, 0}, {100, 100}});
  const auto first = plainView({}, *parent);
  const auto second = plainView({}, *parent);
  const auto third = std::make_shared<View>();
  parent->insertSubview(third, 1);
  EXPECT_THAT(parent->subviews(), testing::ElementsAre(first, third, second));
  parent->bringSubviewToFront(first);
  EXPECT_THAT(parent->subviews(), testing::ElementsAre(third, second, first));
  first->addSubview(parent);
  EXPECT_EQ(parent->superview(), window) << "no view can stand in itself";
  parent->addSubview(nullptr);

  window->addSubview(second);
  EXPECT_EQ(second->superview(), window);
  EXPECT_THAT(parent->subviews(), testing::ElementsAre(third, first));
}

TEST_F(ViewTest, ARemovedViewHasNoWindow) {
  const auto parent = plainView({{0, 0}, {100, 100}});
  const auto child = plainView({{10, 10}, {10, 10}}, *parent);
  EXPECT_EQ(child->window(), window);
  parent->removeFromSuperview();
  EXPECT_EQ(parent->superview(), nullptr);
  EXPECT_EQ(child->window(), nullptr);
  EXPECT_EQ(child->superview(), parent);
  EXPECT_EQ(child->convertPointToWindow({0, 0}), (CGPoint{10, 10})) << "of the topmost view";
  window->addSubview(parent);
  EXPECT_EQ(child->window(), window);
}

TEST_F(ViewTest, AViewOutlivesItsParentAndItsWindow) {
  auto other = std::make_shared<Window>(CGRect{{0, 0}, {10, 10}});
  auto parent = plainView({}, *other);
  const auto child = plainView({}, *parent);
  other.reset();
  EXPECT_EQ(child->window(), nullptr);
  parent.reset();
  EXPECT_EQ(child->superview(), nullptr);
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

TEST_F(ViewTest, KeysFallBackToInstanceVariables) {
  const auto view = plainView({});
  const auto variable = std::make_shared<View>();
  const auto value = std::make_shared<View>();
  view->setInstanceVariable(variable, "_internal");
  EXPECT_EQ(view->instanceVariable("_internal"), variable);
  EXPECT_EQ(view->instanceVariable("internal"), nullptr);
  EXPECT_EQ(view->valueForKey("_internal"), variable);
  EXPECT_EQ(view->valueForKey("internal"), variable);
  view->setValueForKey(value, "internal");
  EXPECT_EQ(view->valueForKey("internal"), value);
  EXPECT_EQ(view->valueForKey("browserView"), nullptr);
}

TEST_F(ViewTest, LayersKeepTagsAndMirrorTheTree) {
  const auto view = plainView({});
  const auto child = plainView({}, *view);
  view->layer().setValueForKey("1", "a");
  view->layer().setValueForKey("2", "b");
  view->layer().setValueForKey("3", "a");
  EXPECT_EQ(*view->layer().valueForKey("a"), "3");
  EXPECT_EQ(*view->layer().valueForKey("b"), "2");
  EXPECT_EQ(view->layer().valueForKey("c"), nullptr);
  EXPECT_THAT(view->layer().sublayers(), testing::ElementsAre(&child->layer()));
  EXPECT_EQ(child->layer().superlayer(), &view->layer());
  view->layer().addAnimation({.duration = 1}, "fade");
  view->layer().addAnimation({.duration = 2}, "fade");
  EXPECT_THAT(view->layer().animationKeys(), testing::ElementsAre("fade"));
  EXPECT_EQ(view->layer().animationForKey("fade")->duration, 2);
}

TEST_F(ViewTest, ValuesOfALayerStayWhereTheyAre) {
  platform::CALayer& layer = window->layer();
  std::vector<const std::string*> texts;
  for (const char* key : {"a", "", "c", "d", "e"}) {
    EXPECT_EQ(layer.valueForKey(key), nullptr);
    layer.setValueForKey(std::string("first ") + key, key);
    texts.push_back(layer.valueForKey(key));
  }
  for (const char* key : {"d", "a"}) layer.setValueForKey("second", key);
  EXPECT_EQ(*texts[0], "second");
  EXPECT_EQ(*texts[1], "first ");
  EXPECT_EQ(*texts[3], "second");
  EXPECT_EQ(layer.valueForKey("e"), texts[4]);
  EXPECT_EQ(*texts[4], "first e");
}

}  // namespace
}  // namespace tarni::headless::test
