// Systems that lack something: the application lives on and the log says once what no longer works.
#include "agent/interaction/UIApplication_KIFAdditions.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "backends/ios/touch/HIDEventSystem.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "tests/ios/OnIos.h"

namespace tarni::test {
namespace {

struct Lack {
  const char* className;
  const char* selector;
  const char* consequence;
};

class Lacking : public OnIos, public testing::WithParamInterface<Lack> {};

INSTANTIATE_TEST_SUITE_P(
    Of, Lacking,
    testing::Values(Lack{"UITouch", "setWindow:", "touches belong to no window"},
                    Lack{"UITouch", "setTapCount:", "touches count no taps"},
                    Lack{"UITouch", "_setLocationInWindow:resetPrevious:", "have no location"},
                    Lack{"UITouch", "setView:", "touches reach no view"},
                    Lack{"UITouch", "setPhase:", "touches neither move nor end"},
                    Lack{"UITouch", "_setIsFirstTouchForView:", "may ignore touches"},
                    Lack{"UITouch", "setIsTap:", "touches are not marked as taps"},
                    Lack{"UITouch", "setTimestamp:", "touches have no time"},
                    Lack{"UITouch", "setGestureView:", "gesture views are not set"},
                    Lack{"UITouch", "_setHidEvent:", "touches carry no digitizer record"},
                    Lack{"UIEvent", "_clearTouches", "gestures are not made"},
                    Lack{"UIEvent", "_addTouch:forDelayedDelivery:", "gestures are not made"},
                    Lack{"UIEvent", "_setHIDEvent:", "events carry no digitizer record"},
                    Lack{"UIEvent", "_setGSEvent:", "events carry no record of the old kind"},
                    Lack{"UIEvent", "_setTimestamp:", "events have no time"},
                    Lack{"UIApplication", "_touchesEvent", "gestures are not made"},
                    Lack{"UIApplication", "pushRunLoopMode:", "its calls are not followed"},
                    Lack{"UIApplication", "pushRunLoopMode:requester:", "are not followed"},
                    Lack{"UIApplication", "popRunLoopMode:", "its calls are not followed"},
                    Lack{"UIApplication", "popRunLoopMode:requester:", "are not followed"},
                    Lack{"UIWebBrowserView", "tapInteractionWithLocation:", "take no taps"}),
    [](const auto& tested) {
      std::string name = std::string(tested.param.className) + "_" + tested.param.selector;
      std::ranges::replace(name, ':', '_');
      return name;
    });

TEST_P(Lacking, IsSaidOnceAndGesturesGoOn) {
  const Lack& lack = GetParam();
  UIButton* const button = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
  ForgetMethod([NSString stringWithUTF8String:lack.className], sel_registerName(lack.selector));
  run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
  run(KIFAdditions::dragFromPoint(ref(button), {20, 25}, {20, 35}));
  run(KIFAdditions::tapAtPoint(ref(add<UIWebView>([UIWebView class], NSMakeRect(0, 0, 9, 9))),
                               {1, 1}));
  KIFAdditions::swizzleRunLoop();
  UISystemVersion = {7, 1, 0};
  run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
  UISystemVersion = {12, 0, 0};
  const std::string asked = std::string("-[") + lack.className + " " + lack.selector + "]";
  const auto lines = log_.linesWith(asked);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NE(lines[0].find(" is missing here: "), std::string::npos) << lines[0];
  EXPECT_NE(lines[0].find(lack.consequence), std::string::npos) << lines[0];
}

class Systems : public OnIos {};

TEST_F(Systems, WithoutTouchesSendEventsWithoutThem) {
  UITextField* const field = add<UITextField>([UITextField class], NSMakeRect(40, 100, 100, 50));
  AnswerIn(@"UITouch", @selector(init), nil);
  run(KIFAdditions::tapAtPoint(ref(field), {20, 25}));
  EXPECT_EQ(record("sendEvent:"), "sendEvent:\nsendEvent:\n");
  run(KIFAdditions::dragFromPoint(ref(field), {10, 10}, {10, 50}));
  run(KIFAdditions::longPressAtPoint(ref(field), {20, 25}, 0.01));
  EXPECT_EQ(record("touch"), "");
  EXPECT_FALSE([field isFirstResponder]);
}

TEST_F(Systems, WithoutAViewInsideAWebViewSayThatItTakesNoTaps) {
  const platform::UIViewRef other = ref(addView([UIView class], NSMakeRect(0, 0, 10, 10)));
  run(KIFAdditions::tapWebViewAtPoint(other, {5, 5}));
  EXPECT_EQ(log_.linesWith("UIView._internal is missing here: web views take no taps").size(), 1U);
}

TEST_F(Systems, WithoutIOKitsFunctionsSendEventsWithoutRecords) {
  ios::HIDEventSystem without([](const char*) -> void* { return nullptr; });
  platform::Platform platform = platform::current();
  platform.hidEvents = &without;
  platform::install(platform);
  UIButton* const button = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
  run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
  EXPECT_EQ(record("sendEvent:"),
            "sendEvent: (phase 0 at 60 125)\nsendEvent: (phase 3 at 60 125)\n");
  for (const char* name :
       {"IOHIDEventCreateDigitizerEvent", "IOHIDEventCreateDigitizerFingerEventWithQuality",
        "IOHIDEventSetIntegerValue", "IOHIDEventAppendEvent"}) {
    EXPECT_EQ(log_.linesWith(std::string(name) + " is missing here").size(), 1U) << name;
  }
}

TEST_F(Systems, WithoutAlertViewsSayWhatWouldHaveBeenShown) {
  EXPECT_TRUE(platform::current().alerts->show("hello", "Cancel", std::nullopt));
  ASSERT_EQ([[UIAlertView shown] count], 1U);
  EXPECT_STREQ([[[[UIAlertView shown] lastObject] message] UTF8String], "hello");
  RaiseIn(@"UIAlertView", @selector(show));
  EXPECT_FALSE(platform::current().alerts->show("in scenes", "Cancel", std::nullopt));
  EXPECT_EQ(log_.linesWith("A message is not shown: in scenes").size(), 1U);
  ForgetClass(@"UIAlertView");
  EXPECT_FALSE(platform::current().alerts->show("hello", "Cancel", std::nullopt));
  EXPECT_EQ(log_.linesWith("UIAlertView is missing here: messages are not shown").size(), 1U);
}

TEST_F(Systems, WithoutAKindOfViewShowTheOthers) {
  ForgetClass(@"UIWebBrowserView");
  ForgetClass(@"UIWebView");
  UIView* const page = addView([UIWebView class], NSMakeRect(0, 0, 10, 10));
  EXPECT_FALSE(platform::as<platform::UIWebView>(ref(page)));
  EXPECT_EQ(ref(page)->getClass()->name(), "UIWebView");
}

TEST_F(Systems, BeforeTheApplicationIsMadeHaveNoWindowAndSwallowEvents) {
  ForgetClass(@"UIApplication");
  EXPECT_FALSE(platform::current().application->keyWindow());
  EXPECT_TRUE(platform::current().application->windowsWithKeyWindow().empty());
  run(platform::current().application->sendEvent(platform::current().application->_touchesEvent()));
  EXPECT_EQ(record("sendEvent:"), "");
}

}  // namespace
}  // namespace tarni::test
