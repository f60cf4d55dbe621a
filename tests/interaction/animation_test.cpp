#include <limits>

#include "agent/interaction/CAAnimation_KIFAdditions.h"
#include "agent/interaction/CALayer_KIFAdditions.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using headless::build;
using headless::View;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr float kForEver = std::numeric_limits<float>::infinity();

TEST(CompletionTime, GoesByRepeatDurationThenRepeatCountThenDuration) {
  using KIFAdditions::KIF_completionTime;
  EXPECT_EQ(KIF_completionTime({10, 2, 0, 0}), 12);
  EXPECT_EQ(KIF_completionTime({10, 2, 3, 0}), 16);
  EXPECT_EQ(KIF_completionTime({10, 2, 3, 4}), 14);
  EXPECT_EQ(KIF_completionTime({10, 2, kForEver, 0}), kInfinity);
  EXPECT_EQ(KIF_completionTime({10, 2, kForEver, 4}), 14);
}

class Animations : public test::Screen {
 protected:
  double now() { return environment.processInfo().currentMediaTime(); }

  headless::ViewRef outer = plainView({{0, 0}, {100, 100}});
  headless::ViewRef inner = build<View>().in(*outer);
};

TEST_F(Animations, OneInAVisibleLayerBelowCountsWhileItRunsUnlessItNeverEnds) {
  inner->layer().addAnimation({now() + 100, 2, 0, 0}, "later");
  inner->layer().addAnimation({now() - 1, 2, kForEver, 0}, "forever");
  outer->layer().addAnimation({now() - 1, 60, 0, 0}, "_UIParallaxMotionEffect");
  EXPECT_FALSE(KIFAdditions::hasAnimations(outer->layer()));
  inner->layer().addAnimation({now() - 1, 2, 0, 0}, "position");
  EXPECT_TRUE(KIFAdditions::hasAnimations(outer->layer()));
  inner->setHidden(true);
  EXPECT_FALSE(KIFAdditions::hasAnimations(outer->layer()));
  inner->setHidden(false);
  environment.processInfo().skip(1.5);
  EXPECT_FALSE(KIFAdditions::hasAnimations(outer->layer()));
}

}  // namespace
}  // namespace tarni
