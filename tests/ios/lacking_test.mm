// Systems that lack something: the application lives on and the log says once what no longer works.
#include <sstream>

#include "agent/interaction/UIApplication_KIFAdditions_RunLoop.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "backends/ios/touch/HIDEventSystem.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "tests/ios/OnIos.h"

namespace tarni::test {
namespace {

class Systems : public OnIos {
 protected:
  void expectSaidOnce(const std::string& method) {
    EXPECT_EQ(log_.linesWith(method).size(), 1U) << method;
    EXPECT_EQ(log_.linesWith(method + " is missing here: ").size(), 1U) << method;
  }
};

TEST_F(Systems, WithoutAPrivateMethodSayItOnceAndMakeTheirGestures) {
  const std::pair<const char*, const char*> asked[] = {
      {"UITouch", "setWindow: setTapCount: _setLocationInWindow:resetPrevious: setView: setPhase: "
                  "_setIsFirstTouchForView: setIsTap: setTimestamp: setGestureView: _setHidEvent:"},
      {"UIEvent", "_clearTouches _addTouch:forDelayedDelivery: _setHIDEvent: _setGSEvent: "
                  "_setTimestamp:"},
      {"UIApplication", "_touchesEvent"},
      {"UIWebBrowserView", "tapInteractionWithLocation:"}};
  UIWaitsAreSkipped = YES;
  UIButton* const button = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
  UIWebView* const page = add<UIWebView>([UIWebView class], NSMakeRect(0, 0, 9, 9));
  for (const auto& [className, selectors] : asked) {
    std::istringstream words(selectors);
    for (std::string selector; words >> selector;) {
      ForgetMethod([NSString stringWithUTF8String:className], sel_registerName(selector.c_str()));
      run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
      run(KIFAdditions::dragFromPoint(ref(button), {20, 25}, {20, 35}));
      run(KIFAdditions::tapAtPoint(ref(page), {1, 1}));
      UISystemVersion = {7, 1, 0};
      run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
      UISystemVersion = {12, 0, 0};
      EndFaults();
      expectSaidOnce(std::string("-[") + className + " " + selector + "]");
    }
  }
}

TEST_F(Systems, WithoutTheStackOfModesSayThatItIsNotFollowed) {
  const std::string calls[] = {"pushRunLoopMode:", "pushRunLoopMode:requester:", "popRunLoopMode:",
                               "popRunLoopMode:requester:"};
  for (const std::string& call : calls) {
    ForgetMethod(@"UIApplication", sel_registerName(call.c_str()));
  }
  KIFAdditions::swizzleRunLoop();
  for (const std::string& call : calls) expectSaidOnce("-[UIApplication " + call + "]");
}

TEST_F(Systems, WithoutTouchesSendEventsWithoutThem) {
  UITextField* const field = add<UITextField>([UITextField class], NSMakeRect(40, 100, 100, 50));
  AnswerIn(@"UITouch", @selector(init), nil);
  run(KIFAdditions::tapAtPoint(ref(field), {20, 25}));
  EXPECT_EQ(record({"sendEvent:"}), "sendEvent:\nsendEvent:\n");
  run(KIFAdditions::dragFromPoint(ref(field), {10, 10}, {10, 50}));
  run(KIFAdditions::longPressAtPoint(ref(field), {20, 25}, 0.01));
  EXPECT_EQ(record({"touch"}), "");
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
  EXPECT_EQ(record({"sendEvent:"}),
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
  EXPECT_EQ(record({"sendEvent:"}), "");
}

}  // namespace
}  // namespace tarni::test
