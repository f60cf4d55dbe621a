#include "agent/interaction/UITouch_KIFAdditions.h"
#include "agent/recording/RecorderEvent.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Switch.h"
#include "tests/recording/Recording.h"

namespace tarni {
namespace {

using headless::build;
using headless::View;

class Capture : public test::Recording {
 protected:
  std::size_t bucketSize() { return ElementsQueue::sharedInstance().getElementsBucketSize(); }

  headless::ViewRef view = plainView({{0, 0}, {300, 300}});
};

TEST_F(Capture, AViewIsRecordedAtTheTouchDownAndASwitchAtTheTouchUpHoweverFarAway) {
  const auto control = build<headless::Switch>().frame({{0, 0}, {50, 30}}).in(*window);
  walk();
  environment.finger().down(*window, {100, 10});
  ASSERT_EQ(bucketSize(), 1U);
  const auto info = ElementsQueue::sharedInstance().getElementsBucket().at(0);
  EXPECT_EQ(info->getAction(), "Click");
  EXPECT_EQ(info->getUIView(), view);
  EXPECT_EQ(info->getDatArgs(), "");
  EXPECT_EQ(info->getTouchedPoint(), (platform::CGPoint{100, 10}));
  environment.finger().up();
  environment.finger().down(*window, {10, 10});
  environment.finger().moveTo({10, 200});
  EXPECT_EQ(bucketSize(), 1U);
  environment.finger().up();
  ASSERT_EQ(bucketSize(), 2U);
  EXPECT_EQ(ElementsQueue::sharedInstance().getElementsBucket().at(1)->getUIView(), control);
}

TEST_F(Capture, NothingIsRecordedOfTheKeyboardOfNoViewOfOneWithoutIdentityAndDuringPlayback) {
  const auto key =
      build<View>().className("UIKeyboardLayoutStar").frame({{0, 0}, {50, 50}}).in(*view);
  walk();
  environment.finger().tap(*key);
  environment.finger().down(*window, {-5, -5});
  environment.finger().up();
  environment.finger().tap(*plainView({{100, 0}, {50, 50}}));
  GlobalVars::sharedInstance().set_isPlaybackStarted("true");
  environment.finger().tap(*view, {200, 200});
  EXPECT_EQ(bucketSize(), 0U);
  GlobalVars::sharedInstance().set_isPlaybackStarted(std::nullopt);
  environment.finger().tap(*view, {200, 200});
  environment.finger().tap(*view, {200, 200});
  EXPECT_EQ(bucketSize(), 1U) << "a view is recorded once until the bucket is emptied";
}

TEST_F(Capture, SpyModeSelectsInsteadOfRecordingAndDivertsTheTouchOutsideTheScreen) {
  build<headless::Button>("OK").frame({{150, 250}, {100, 40}}).in(*view);
  walk();
  GlobalVars::sharedInstance().set_spyMode("true");
  environment.finger().down(*window, {160, 260});
  environment.finger().up();
  EXPECT_EQ(bucketSize(), 0U);
  ASSERT_EQ(RecorderQueue::get().getLength(), 1U);
  const auto spied = RecorderQueue::get().dequeue();
  EXPECT_EQ(spied->size(), 2U);
  EXPECT_EQ(spied->at(0).at("tagName"), "UIButton");
  const auto& events = environment.application().eventLog().events();
  ASSERT_GE(events.size(), 2U);
  for (std::size_t fake : {0, 1}) {
    const auto& touch = events[fake].touches.at(0);
    EXPECT_EQ(touch.locationInWindow, (platform::CGPoint{-100, -200}));
    EXPECT_FALSE(touch.view.lock());
  }
}

}  // namespace
}  // namespace tarni
