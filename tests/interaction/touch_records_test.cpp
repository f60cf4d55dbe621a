#include "agent/interaction/UIEvent_KIFAdditions.h"
#include "agent/interaction/UITouch_KIFAdditions.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "backends/posix/HIDEventRecord.h"
#include "backends/posix/TouchRecord.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using headless::LoggedEvent;
using platform::DigitizerEventArguments;
using platform::DigitizerFingerArguments;
using platform::UITouchPhase;
using posix::HIDEventRecord;
using test::complete;

constexpr std::uint32_t kIsDisplayIntegrated = 0xB0019;

DigitizerFingerArguments fingerOf(const HIDEventRecord& hand, std::size_t index) {
  return std::get<DigitizerFingerArguments>(hand.children.at(index)->arguments);
}

class TouchRecords : public test::Screen {
 protected:
  const std::deque<LoggedEvent>& events() { return environment.application().eventLog().events(); }

  headless::ViewRef view = plainView({{100, 200}, {200, 100}});
};

TEST_F(TouchRecords, FreshTouchIsWhollySetAndMovingKeepsThePreviousLocation) {
  const auto touch = std::dynamic_pointer_cast<posix::TouchRecord>(
      KIFAdditions::initAtPointInView({10, 20}, view));
  ASSERT_TRUE(touch);
  EXPECT_EQ(touch->window(), window);
  EXPECT_EQ(touch->view(), view);
  EXPECT_EQ(touch->gestureView(), view);
  EXPECT_EQ(touch->tapCount(), 1);
  EXPECT_EQ(touch->phase(), UITouchPhase::Began);
  EXPECT_TRUE(touch->isTap());
  EXPECT_TRUE(touch->isFirstTouchForView());
  EXPECT_EQ(touch->locationInWindow(), (platform::CGPoint{110, 220}));
  EXPECT_EQ(touch->previousLocationInWindow(), (platform::CGPoint{110, 220}));
  EXPECT_GT(touch->timestamp(), 0);
  const double began = touch->timestamp();
  environment.processInfo().skip(5);
  KIFAdditions::setLocationInWindow(touch, {1, 2});
  EXPECT_EQ(touch->previousLocationInWindow(), (platform::CGPoint{110, 220}));
  EXPECT_GE(touch->timestamp(), began + 5);
  environment.processInfo().skip(5);
  KIFAdditions::setPhaseAndUpdateTimestamp(touch, UITouchPhase::Moved);
  EXPECT_GE(touch->timestamp(), began + 10);
}

TEST_F(TouchRecords, TapCarriesTheDigitizerRecordOfItsBeginningTwice) {
  complete(KIFAdditions::tapAtPoint(view, {10, 20}));
  ASSERT_EQ(events().size(), 2U);
  const auto hand = events()[0].hidEvent;
  ASSERT_TRUE(hand);
  const std::uint64_t timeStamp = std::get<DigitizerEventArguments>(hand->arguments).timeStamp;
  EXPECT_GT(timeStamp, 0U);

  DigitizerEventArguments expectedHand;
  expectedHand.timeStamp = timeStamp;
  expectedHand.transducerType = 3;
  expectedHand.eventMask = 2;
  expectedHand.touch = true;
  EXPECT_EQ(std::get<DigitizerEventArguments>(hand->arguments), expectedHand);
  EXPECT_EQ(hand->integerValues, (std::map<std::uint32_t, long>{{kIsDisplayIntegrated, 1}}));

  DigitizerFingerArguments expectedFinger;
  expectedFinger.timeStamp = timeStamp;
  expectedFinger.index = 1;
  expectedFinger.identity = 2;
  expectedFinger.eventMask = 3;
  expectedFinger.x = 110;
  expectedFinger.y = 220;
  expectedFinger.minorRadius = expectedFinger.majorRadius = 5;
  expectedFinger.quality = expectedFinger.density = expectedFinger.irregularity = 1;
  expectedFinger.range = expectedFinger.touch = true;
  ASSERT_EQ(hand->children.size(), 1U);
  EXPECT_EQ(fingerOf(*hand, 0), expectedFinger);
  EXPECT_EQ(hand->children[0]->integerValues,
            (std::map<std::uint32_t, long>{{kIsDisplayIntegrated, 1}}));

  EXPECT_EQ(events()[1].touches[0].phase, UITouchPhase::Ended);
  EXPECT_EQ(events()[1].hidEvent, hand);
}

TEST_F(TouchRecords, EveryFingerOfADragHasItsOwnRecordInEveryEvent) {
  const std::vector<KIFAdditions::Path> paths{{{0, 0}, {10, 0}}, {{50, 50}, {50, 60}}};
  complete(KIFAdditions::dragPointsAlongPaths(view, paths));
  ASSERT_EQ(events().size(), 4U);
  const HIDEventRecord& down = *events()[0].hidEvent;
  ASSERT_EQ(down.children.size(), 2U);
  EXPECT_EQ(fingerOf(down, 0).index, 1U);
  EXPECT_EQ(fingerOf(down, 1).index, 2U);
  EXPECT_EQ(fingerOf(down, 1).identity, 2U);
  EXPECT_EQ(fingerOf(down, 1).timeStamp, fingerOf(down, 0).timeStamp);
  EXPECT_EQ(fingerOf(down, 1).eventMask, 3U);

  const HIDEventRecord& moved = *events()[1].hidEvent;
  for (std::size_t finger : {0, 1}) {
    EXPECT_EQ(fingerOf(moved, finger).eventMask, 4U);
    EXPECT_TRUE(fingerOf(moved, finger).range);
    EXPECT_TRUE(fingerOf(moved, finger).touch);
  }
  EXPECT_EQ(fingerOf(moved, 1).y, 260);

  for (std::size_t lifting : {2, 3}) {
    const HIDEventRecord& up = *events()[lifting].hidEvent;
    ASSERT_EQ(up.children.size(), 1U);
    EXPECT_EQ(fingerOf(up, 0).index, 1U);
    EXPECT_EQ(fingerOf(up, 0).eventMask, 3U);
    EXPECT_FALSE(fingerOf(up, 0).range);
    EXPECT_FALSE(fingerOf(up, 0).touch);
    EXPECT_TRUE(std::get<DigitizerEventArguments>(up.arguments).touch);
  }
}

TEST_F(TouchRecords, TouchesHaveRecordsOfTheirOwnFromVersion9On) {
  complete(KIFAdditions::tap(view));
  ASSERT_TRUE(events()[0].touches[0].hidEvent);
  EXPECT_EQ(events()[0].touches[0].hidEvent->children.size(), 1U);
  environment.application().eventLog().clear();
  environment.processInfo().setOperatingSystemVersion({8, 4, 0});
  complete(KIFAdditions::tap(view));
  EXPECT_TRUE(events()[0].hidEvent);
  EXPECT_FALSE(events()[0].touches[0].hidEvent);
  EXPECT_FALSE(events()[0].gsEvent);
}

TEST_F(TouchRecords, BelowVersion8OnlyTheLegacyRecordIsUsed) {
  environment.processInfo().setOperatingSystemVersion({7, 1, 2});
  complete(KIFAdditions::dragFromPoint(view, {10, 20}, {30, 20}, 2));
  ASSERT_EQ(events().size(), 3U);
  for (const LoggedEvent& event : events()) {
    EXPECT_FALSE(event.hidEvent);
    ASSERT_TRUE(event.gsEvent);
    EXPECT_EQ(event.gsEvent->type, 3001U);
    EXPECT_EQ(event.gsEvent->sizeX, 1.0F);
    EXPECT_EQ(event.gsEvent->sizeY, 1.0F);
    EXPECT_EQ(event.timestamp, event.touches[0].timestamp);
  }
  const platform::GSEventRecord& moved = *events()[1].gsEvent;
  EXPECT_EQ(moved.flags, 0x03010180U);
  EXPECT_EQ(moved.x1, 130.0F);
  EXPECT_EQ(moved.y1, 220.0F);
  EXPECT_EQ(moved.x2, 130.0F);
  EXPECT_EQ(moved.y2, 220.0F);
  EXPECT_EQ(moved.x3, 130.0F);
  EXPECT_EQ(moved.y3, 220.0F);
  EXPECT_EQ(events()[2].gsEvent->flags, 0x01010180U);
}

}  // namespace
}  // namespace tarni
