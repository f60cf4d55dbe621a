// What a gesture of the agent's asks of UIKit and IOKit, call by call.
#include "agent/interaction/UIEvent_KIFAdditions.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "tests/ios/OnIos.h"

namespace tarni::test {
namespace {

class Gestures : public OnIos {
 protected:
  UIButton* const button_ = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
};

TEST_F(Gestures, ATapIsOneTouchWithItsRecordsInOneEventSentTwice) {
  run(KIFAdditions::tapAtPoint(ref(button_), {20, 25}));
  EXPECT_EQ(record(),
            "touch 1 setWindow: UIWindow\n"
            "touch 1 setTapCount: 1\n"
            "touch 1 _setLocationInWindow: 60 125 resetPrevious: 1\n"
            "touch 1 setView: UIButton\n"
            "touch 1 setPhase: 0\n"
            "touch 1 _setIsFirstTouchForView: 1\n"
            "touch 1 setIsTap: 1\n"
            "touch 1 setTimestamp: now\n"
            "touch 1 setGestureView: UIButton\n"
            "hand 1 = IOHIDEventCreateDigitizerEvent(default, ticks1, transducer 3, index 0, "
            "identity 0, mask 2, buttons 0, 0 0 0, pressure 0 0, range 0, touch 1, options 0)\n"
            "IOHIDEventSetIntegerValue(hand 1, 0xB0019, 1)\n"
            "finger 1 = IOHIDEventCreateDigitizerFingerEventWithQuality(default, ticks1, index 1, "
            "identity 2, mask 3, 60 125 0, pressure 0, twist 0, radii 5 5, quality 1 1 1, range 1, "
            "touch 1, options 0)\n"
            "IOHIDEventSetIntegerValue(finger 1, 0xB0019, 1)\n"
            "IOHIDEventAppendEvent(hand 1, finger 1, 0)\n"
            "touch 1 _setHidEvent: hand 1\n"
            "event _clearTouches\n"
            "hand 2 = IOHIDEventCreateDigitizerEvent(default, ticks2, transducer 3, index 0, "
            "identity 0, mask 2, buttons 0, 0 0 0, pressure 0 0, range 0, touch 1, options 0)\n"
            "IOHIDEventSetIntegerValue(hand 2, 0xB0019, 1)\n"
            "finger 2 = IOHIDEventCreateDigitizerFingerEventWithQuality(default, ticks2, index 1, "
            "identity 2, mask 3, 60 125 0, pressure 0, twist 0, radii 5 5, quality 1 1 1, range 1, "
            "touch 1, options 0)\n"
            "IOHIDEventSetIntegerValue(finger 2, 0xB0019, 1)\n"
            "IOHIDEventAppendEvent(hand 2, finger 2, 0)\n"
            "event _setHIDEvent: hand 2\n"
            "event _addTouch: touch 1 forDelayedDelivery: 0\n"
            "sendEvent: (phase 0 at 60 125)\n"
            "touch 1 setTimestamp: now\n"
            "touch 1 setPhase: 3\n"
            "sendEvent: (phase 3 at 60 125)\n");
}

TEST_F(Gestures, ADragMovesInStepsAndLiftsItsFinger) {
  run(KIFAdditions::dragFromPoint(ref(button_), {10, 10}, {10, 50}));
  EXPECT_EQ(record({"sendEvent:", "CFRunLoop"}),
            "sendEvent: (phase 0 at 50 110)\n"
            "CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.01, 0)\n"
            "sendEvent: (phase 1 at 50 130)\n"
            "CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.01, 0)\n"
            "sendEvent: (phase 1 at 50 150)\n"
            "CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.01, 0)\n"
            "sendEvent: (phase 3 at 50 150)\n");
}

TEST_F(Gestures, MovedAndLiftedFingersAreTheirOwnInTheRecords) {
  run(KIFAdditions::pinchAtPoint(ref(button_), {50, 25}, 10, 2));
  std::string fingers = record({"finger"});
  for (const char* wanted : {
           "index 1, identity 2, mask 3, 40 125 0,",   // both go down
           "index 2, identity 2, mask 3, 140 125 0,",  //
           "index 1, identity 2, mask 4, 50 125 0,",   // and move
           "index 2, identity 2, mask 4, 130 125 0,",
       }) {
    EXPECT_NE(fingers.find(wanted), std::string::npos) << wanted << " in\n" << fingers;
  }
  EXPECT_NE(
      fingers.find("mask 3, 130 125 0, pressure 0, twist 0, radii 5 5, quality 1 1 1, range 0, "
                   "touch 0"),
      std::string::npos)
      << fingers;
}

TEST_F(Gestures, FingersComeInTheOrderOfTheirMakingAndEveryRecordIsGivenBack) {
  @autoreleasepool {
    run(KIFAdditions::twoFingerTapAtPoint(ref(button_), {50, 25}));
    const auto& touches = platform::current().application->_touchesEvent().allTouches();
    ASSERT_EQ(touches.size(), 2U);
    EXPECT_EQ(touches[0]->locationInView(nullptr), (platform::CGPoint{50, 85}));
    EXPECT_EQ(touches[1]->locationInView(nullptr), (platform::CGPoint{130, 165}));
    KIFAdditions::eventWithTouch(nullptr);
  }
  // The event keeps the last one.
  EXPECT_EQ(LivingHIDEvents(), 1);
}

// The records of a version: none of its own for a touch before 9, the old kind alone before 8.
TEST_F(Gestures, OlderSystemsGetTheRecordsThatTheyKnow) {
  UISystemVersion = {8, 4, 0};
  run(KIFAdditions::tapAtPoint(ref(button_), {20, 25}));
  std::string lines = record();
  EXPECT_EQ(lines.find("_setHidEvent"), std::string::npos);
  EXPECT_NE(lines.find("_setHIDEvent: hand 1"), std::string::npos);
  UISystemVersion = {7, 1, 0};
  run(KIFAdditions::tapAtPoint(ref(button_), {20, 25}));
  lines = record();
  EXPECT_EQ(lines.find("IOHID"), std::string::npos);
  EXPECT_NE(lines.find("event _setGSEvent: flags 0x03010180 type 3001 at 60 125, 60 125, size 1 1, "
                       "60 125\nevent _setTimestamp: now\n"),
            std::string::npos)
      << lines;
  UISystemVersion = {12, 0, 0};
}

TEST_F(Gestures, AWebViewTakesTheTapItself) {
  UIWebView* const page = add<UIWebView>([UIWebView class], NSMakeRect(0, 200, 300, 300));
  run(KIFAdditions::tapAtPoint(ref(page), {7, 9}));
  run(KIFAdditions::tapWebViewAtPoint(ref(page), {3, 4}));
  EXPECT_EQ(record(), "");
  UIWebBrowserView* const browser = [page valueForKeyPath:@"_internal.browserView"];
  ASSERT_EQ([[browser tapLocations] count], 2U);
  EXPECT_STREQ([[[browser tapLocations] firstObject] UTF8String], "{x = 7; y = 9}");
  NSValue* const boxed = [[browser tapLocations] lastObject];
  EXPECT_STREQ([boxed objCType], @encode(CGPoint));
  EXPECT_EQ([boxed pointValue].x, 3);
  EXPECT_EQ([boxed pointValue].y, 4);
}

}  // namespace
}  // namespace tarni::test
