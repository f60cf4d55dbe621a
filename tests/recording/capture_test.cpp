#include "agent/interaction/UITouch_KIFAdditions.h"
#include "agent/recording/RecorderEvent.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/Switch.h"
#include "platform/Foundation/NSException.h"
#include "tests/recording/Recording.h"

namespace tarni {
namespace {

using headless::build;
using headless::View;
using platform::UITouchPhase;

class Capture : public test::Recording {
 protected:
  std::size_t bucketSize() { return ElementsQueue::sharedInstance().getElementsBucketSize(); }

  bool loggedPart(const std::string& part) {
    for (const std::string& line : environment.log().lines()) {
      if (line.find(part) != std::string::npos) return true;
    }
    return false;
  }

  headless::ViewRef view = plainView({{0, 0}, {300, 300}});
};

TEST_F(Capture, OrdinaryViewIsRecordedWhenTheFingerGoesDown) {
  walk();
  environment.finger().down(*window, {10, 10});
  EXPECT_EQ(bucketSize(), 1U);
  environment.finger().up();
  EXPECT_EQ(bucketSize(), 1U);
  const auto info = ElementsQueue::sharedInstance().getElementsBucket().at(0);
  EXPECT_EQ(info->getAction(), "Click");
  EXPECT_EQ(info->getUIView(), view);
  EXPECT_EQ(info->getDatArgs(), "");
  EXPECT_EQ(info->getTouchedPoint(), (platform::CGPoint{10, 10}));
}

TEST_F(Capture, SwitchIsRecordedWhenTheFingerComesUpHoweverFarItWent) {
  const auto control = build<headless::Switch>().frame({{0, 0}, {50, 30}}).in(*window);
  walk();
  environment.finger().down(*window, {10, 10});
  environment.finger().moveTo({10, 200});
  EXPECT_EQ(bucketSize(), 0U);
  environment.finger().up();
  ASSERT_EQ(bucketSize(), 1U);
  EXPECT_EQ(ElementsQueue::sharedInstance().getElementsBucket().at(0)->getUIView(), control);
}

TEST_F(Capture, SwitchesAndSegmentsAreKnownByKindAndByName) {
  RecorderEvent event;
  EXPECT_TRUE(event.IsViewIsNotOfEventType(build<headless::Switch>().className("Toggle").get()));
  EXPECT_TRUE(event.IsViewIsNotOfEventType(build<View>().className("MySWITCHThing").get()));
  EXPECT_TRUE(event.IsViewIsNotOfEventType(build<View>().className("UISegmentLabel").get()));
  EXPECT_FALSE(event.IsViewIsNotOfEventType(build<View>().className("Segment").get()));
  EXPECT_FALSE(event.IsViewIsNotOfEventType(nullptr));
}

TEST_F(Capture, KeyboardIsNeverRecorded) {
  const auto key =
      build<View>().className("UIKeyboardLayoutStar").frame({{0, 0}, {50, 50}}).in(*view);
  walk();
  environment.finger().tap(*key);
  EXPECT_EQ(bucketSize(), 0U);
}

TEST_F(Capture, NothingIsRecordedOncePlaybackHasStarted) {
  walk();
  GlobalVars::sharedInstance().set_isPlaybackStarted("true");
  environment.finger().tap(*view);
  EXPECT_EQ(bucketSize(), 0U);
}

TEST_F(Capture, TouchThatHitsNothingIsNotRecorded) {
  walk();
  environment.finger().down(*window, {-5, -5});
  environment.finger().up();
  EXPECT_EQ(bucketSize(), 0U);
}

TEST_F(Capture, SpyModeSelectsInsteadOfRecordingAndDivertsTheTouch) {
  const auto button = build<headless::Button>("OK").frame({{0, 0}, {100, 40}}).in(*view);
  walk();
  GlobalVars::sharedInstance().set_spyMode("true");
  environment.finger().down(*window, {10, 10});
  EXPECT_EQ(bucketSize(), 0U);
  ASSERT_EQ(RecorderQueue::get().getLength(), 1U);
  const auto spied = RecorderQueue::get().dequeue();
  EXPECT_EQ(spied->size(), 2U);
  EXPECT_EQ(spied->at(0).at("tagName"), "UIButton");
  const auto& events = environment.application().eventLog().events();
  ASSERT_GE(events.size(), 2U);
  for (std::size_t fake : {0, 1}) {
    EXPECT_EQ(events[fake].touches.at(0).locationInWindow, (platform::CGPoint{-100, -200}));
  }
  environment.finger().up();
  EXPECT_EQ(RecorderQueue::get().getLength(), 0U);
}

TEST_F(Capture, SpiedTouchIsDivertedOutsideTheScreenWhereverTheElementStands) {
  const auto button = build<headless::Button>("OK").frame({{150, 250}, {100, 40}}).in(*view);
  walk();
  GlobalVars::sharedInstance().set_spyMode("true");
  environment.finger().down(*window, {160, 260});
  ASSERT_EQ(RecorderQueue::get().getLength(), 1U);
  EXPECT_EQ(RecorderQueue::get().dequeue()->at(0).at("tagName"), "UIButton");
  EXPECT_FALSE(environment.application().eventLog().events().front().touches.at(0).view.lock());
  environment.finger().up();
}

// A view that cannot be described.
class BrokenView : public View {
 public:
  std::optional<std::string> accessibilityLabel() const override {
    throw platform::NSException("BrokenException", "cannot be described");
  }
};

TEST_F(Capture, FailureOfTheRecorderNeverReachesTheApplication) {
  const auto broken = build<BrokenView>().frame({{0, 0}, {50, 50}}).in(*window);
  walk();
  environment.application().eventLog().clear();
  environment.finger().tap(*broken);
  EXPECT_EQ(environment.application().eventLog().phases(), "Began Ended");
  EXPECT_TRUE(loggedPart("cannot be described"));
  runWorker();
  EXPECT_TRUE(takeSteps().empty());
}

}  // namespace
}  // namespace tarni
