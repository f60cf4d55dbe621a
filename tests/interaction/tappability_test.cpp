#include <cmath>

#include "agent/interaction/UIView_KIFAdditions.h"
#include "backends/headless/events/GestureRecognizer.h"
#include "backends/headless/views/Bars.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using headless::build;
using headless::View;
using headless::ViewRef;
using platform::CGPoint;
using platform::CGRect;

class Tappability : public test::Screen {
 protected:
  ViewRef cover(const CGRect& frame) { return plainView(frame); }
  CGPoint tappablePoint(const ViewRef& view) {
    return KIFAdditions::tappablePointInRect(view, view->bounds());
  }

  ViewRef view = plainView({{100, 200}, {100, 50}});
};

TEST_F(Tappability, MiddleThenCornersInTheirOrderAreTried) {
  EXPECT_EQ(tappablePoint(view), (CGPoint{50, 25}));
  cover({{140, 215}, {20, 20}});
  EXPECT_EQ(tappablePoint(view), (CGPoint{1, 1}));
  cover({{95, 195}, {10, 10}});
  EXPECT_EQ(tappablePoint(view), (CGPoint{99, 1}));
  cover({{100, 200}, {100, 48}});
  EXPECT_EQ(tappablePoint(view), (CGPoint{1, 49}));
  cover({{90, 240}, {20, 20}});
  EXPECT_EQ(tappablePoint(view), (CGPoint{99, 49}));
  EXPECT_TRUE(KIFAdditions::isTappable(view));
  cover({{100, 200}, {100, 50}});
  EXPECT_TRUE(std::isnan(tappablePoint(view).x));
  EXPECT_FALSE(KIFAdditions::isTappable(view));
  EXPECT_FALSE(KIFAdditions::isProbablyTappable(view));
}

TEST_F(Tappability, LabelIsTappableInsideAButtonAlone) {
  const auto button = build<headless::Button>("OK").frame({{0, 300}, {100, 40}}).in(*window);
  ASSERT_TRUE(button->titleLabel());
  EXPECT_TRUE(KIFAdditions::isTappable(button->titleLabel()));
  EXPECT_TRUE(KIFAdditions::isTappable(button));
  const auto label = build<headless::Label>("text").frame({{0, 0}, {100, 50}}).in(*view);
  EXPECT_FALSE(KIFAdditions::isTappable(label));
}

TEST_F(Tappability, TitleOfANavigationBarTakesTheBarsTouches) {
  const auto bar = build<headless::NavigationBar>("Title").frame({{0, 0}, {390, 44}}).in(*window);
  ASSERT_TRUE(KIFAdditions::isNavigationItemView(bar->itemView()));
  EXPECT_TRUE(KIFAdditions::isTappableWithHitTestResultView(bar->itemView(), bar));
  EXPECT_FALSE(KIFAdditions::isTappableWithHitTestResultView(view, bar));
  EXPECT_FALSE(KIFAdditions::isTappableWithHitTestResultView(view, nullptr));
}

TEST_F(Tappability, TapRecognizerMakesAViewTappableWithoutAHitTest) {
  cover({{0, 0}, {390, 844}});
  EXPECT_FALSE(KIFAdditions::isTappable_AI(view));
  view->addGestureRecognizer(std::make_shared<headless::PanGestureRecognizer>([] {}));
  EXPECT_FALSE(KIFAdditions::hasTapGestureRecognizer(view));
  view->addGestureRecognizer(std::make_shared<headless::TapGestureRecognizer>([] {}));
  EXPECT_TRUE(KIFAdditions::isTappable(view));
  EXPECT_TRUE(KIFAdditions::isTappable_AI(view));
}

TEST_F(Tappability, InteractionIsAskedOfWhoAnswersForTheView) {
  const auto bar = build<headless::NavigationBar>("Title").frame({{0, 0}, {390, 44}}).in(*window);
  bar->itemView()->setUserInteractionEnabled(false);
  EXPECT_TRUE(KIFAdditions::isUserInteractionActuallyEnabled(bar->itemView()));
  bar->setUserInteractionEnabled(false);
  EXPECT_FALSE(KIFAdditions::isUserInteractionActuallyEnabled(bar->itemView()));

  const auto outer = build<headless::Control>().in(*window);
  const auto inner = build<headless::Control>().in(*outer);
  const auto label = build<headless::Label>("x").in(*inner);
  label->setUserInteractionEnabled(false);
  inner->setUserInteractionEnabled(false);
  EXPECT_TRUE(KIFAdditions::isUserInteractionActuallyEnabled(label));
  outer->setUserInteractionEnabled(false);
  EXPECT_FALSE(KIFAdditions::isUserInteractionActuallyEnabled(label));
}

TEST_F(Tappability, AHiddenAncestorHidesFromTheHierarchyAndAClippingOneFromTheFrame) {
  const auto child = build<View>().frame({{0, 0}, {100, 20}}).in(*view);
  EXPECT_TRUE(KIFAdditions::isVisibleInViewHierarchy(child));
  view->setHidden(true);
  EXPECT_FALSE(KIFAdditions::isVisibleInViewHierarchy(child));
  EXPECT_TRUE(KIFAdditions::isVisibleInWindowFrame(child));
  view->setBounds({{0, 30}, {100, 50}});
  EXPECT_TRUE(KIFAdditions::isVisibleInWindowFrame(child));
  view->setClipsToBounds(true);
  EXPECT_FALSE(KIFAdditions::isVisibleInWindowFrame(child));
  EXPECT_TRUE(KIFAdditions::isVisibleInWindowFrame(plainView({{0, 0}, {0, 10}})));
  EXPECT_FALSE(KIFAdditions::isVisibleInWindowFrame(plainView({{0, 0}, {0, 0}})));
}

TEST_F(Tappability, AWalkOverDescendantsComesParentFirstUntilItIsStopped) {
  const auto inner = build<View>().in(*view);
  const auto innermost = build<View>().in(*inner);
  build<View>().in(*view);
  std::vector<platform::UIViewRef> seen;
  bool stop = false;
  KIFAdditions::performBlockOnDescendentViews(
      view,
      [&](const platform::UIViewRef& current, bool& end) {
        seen.push_back(current);
        end = current == innermost;
      },
      stop);
  EXPECT_EQ(seen, (std::vector<platform::UIViewRef>{view, inner, innermost}));
  EXPECT_TRUE(stop);
}

TEST_F(Tappability, TransformedWindowGivesWayToOneThatIsNot) {
  EXPECT_EQ(KIFAdditions::windowOrIdentityWindow(view), window);
  window->setTransform(platform::CGAffineTransform::rotation(1));
  EXPECT_EQ(KIFAdditions::windowOrIdentityWindow(view), nullptr);
  const auto other = std::make_shared<headless::Window>(environment.screen().bounds());
  environment.application().addWindow(other);
  EXPECT_EQ(KIFAdditions::windowOrIdentityWindow(view), other);
}

}  // namespace
}  // namespace tarni
