// Systems that lack something and applications that raise: the application lives on, the log says once
// what no longer works, and a command is answered.
#include <nlohmann/json.hpp>
#include <set>

#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "backends/ios/HIDEventSystem.h"
#include "platform/UIKit/UIControls.h"
#include "tests/ios/Await.h"
#include "tests/ios/OnIos.h"

namespace tarni::test {
namespace {

using nlohmann::json;

// --- what a system lacks

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
                    Lack{"UIApplication", "_touchesEvent", "gestures are not made"}),
    [](const auto& tested) {
      std::string name = std::string(tested.param.className) + "_" + tested.param.selector;
      std::ranges::replace(name, ':', '_');
      return name;
    });

TEST_P(Lacking, IsSaidOnceAndGesturesGoOn) {
  const Lack& lack = GetParam();
  UIButton* const button = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
  ForgetMethod([NSString stringWithUTF8String:lack.className],
               sel_registerName(lack.selector));
  run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
  run(KIFAdditions::dragFromPoint(ref(button), {20, 25}, {20, 35}));
  const std::string asked = std::string("-[") + lack.className + " " + lack.selector + "]";
  const auto lines = log_.linesWith(asked);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NE(lines[0].find(" is missing here: "), std::string::npos) << lines[0];
  EXPECT_NE(lines[0].find(lack.consequence), std::string::npos) << lines[0];
}

class Systems : public OnIos {};

TEST_F(Systems, WithoutIOKitsFunctionsSendEventsWithoutRecords) {
  ios::HIDEventSystem without([](const char*) -> void* { return nullptr; });
  platform::Platform platform = platform::current();
  platform.hidEvents = &without;
  platform::install(platform);
  UIButton* const button = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
  run(KIFAdditions::tapAtPoint(ref(button), {20, 25}));
  EXPECT_EQ(record("sendEvent:"), "sendEvent: (phase 0 at 60 125)\nsendEvent: (phase 3 at 60 125)\n");
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

// --- what raises

struct Raising {
  const char* className;
  const char* selector;
};

// Every kind of view, in the window.
class Faults : public OnIos {
 protected:
  UILabel* const label_ = add<UILabel>([UILabel class], NSMakeRect(10, 10, 100, 30));
  UIButton* const button_ = add<UIButton>([UIButton class], NSMakeRect(10, 50, 100, 30));
  UITextField* const field_ = add<UITextField>([UITextField class], NSMakeRect(10, 90, 100, 30));
  UISwitch* const switch_ = add<UISwitch>([UISwitch class], NSMakeRect(10, 130, 100, 30));
  UITextView* const text_ = add<UITextView>([UITextView class], NSMakeRect(10, 170, 100, 30));
  UIWebView* const page_ = add<UIWebView>([UIWebView class], NSMakeRect(10, 210, 100, 30));
  UIScrollView* const scroll_ =
      add<UIScrollView>([UIScrollView class], NSMakeRect(10, 250, 100, 100));
  UISegmentedControl* const segments_ =
      add<UISegmentedControl>([UISegmentedControl class], NSMakeRect(10, 360, 100, 30));
  UITableViewCell* const cell_ =
      add<UITableViewCell>([UITableViewCell class], NSMakeRect(10, 400, 100, 44));

  Faults() {
    [label_ setText:@"label"];
    [button_ setTitle:@"button" forState:0];
    [field_ setPlaceholder:@"field"];
    [label_ addGestureRecognizer:[[[UITapGestureRecognizer alloc] initWithTarget:nil
                                                                          action:NULL] autorelease]];
  }

  static std::string command(const json& keys) { return answer(keys.dump() + "\r\n"); }

  // Everything that a host tool can ask for, with every element. Each answer is JSON.
  static void useEverything() {
    const std::string described =
        command({{"functionname", "ai_findelements"}, {"tagname", ""}});
    ASSERT_TRUE(json::accept(described)) << described;
    for (const char* name : {"ai_getscreensnapshot", "swipeto", "swipereset"}) {
      EXPECT_TRUE(json::accept(command({{"functionname", name}}))) << name;
    }
    for (const char* name :
         {"gettext", "getwidth", "getheight", "isenabled", "isdisplayed", "isselected",
          "clickelement", "sendkeysonelement", "swipeon", "highlight"}) {
      for (const json& element : json::parse(described)) {
        if (!element.contains("elementID")) continue;
        const std::string reply = command({{"functionname", name},
                                           {"accessorvalue", element["elementID"]},
                                           {"datavalue", "up"}});
        EXPECT_TRUE(json::accept(reply)) << name << ": " << reply;
      }
    }
  }
};

class RaisingCall : public Faults, public testing::WithParamInterface<Raising> {};

constexpr Raising raisingCalls[] = {
    {"UIView", "superview"},
    {"UIView", "subviews"},
    {"UIView", "window"},
    {"UIView", "layer"},
    {"UIView", "bounds"},
    {"UIView", "frame"},
    {"UIView", "convertPoint:toView:"},
    {"UIView", "convertPoint:fromView:"},
    {"UIView", "hitTest:withEvent:"},
    {"UIView", "isHidden"},
    {"UIView", "isOpaque"},
    {"UIView", "clipsToBounds"},
    {"UIView", "isUserInteractionEnabled"},
    {"UIResponder", "canBecomeFirstResponder"},
    {"UIView", "becomeFirstResponder"},
    {"UIView", "isFirstResponder"},
    {"UIView", "gestureRecognizers"},
    {"UIView", "drawViewHierarchyInRect:afterScreenUpdates:"},
    {"NSObject", "accessibilityLabel"},
    {"NSObject", "accessibilityValue"},
    {"NSObject", "accessibilityHint"},
    {"CALayer", "setValue:forUndefinedKey:"},
    {"CALayer", "valueForUndefinedKey:"},
    {"CALayer", "borderWidth"},
    {"CALayer", "setBorderWidth:"},
    {"CALayer", "borderColor"},
    {"CALayer", "setBorderColor:"},
    {"UILabel", "text"},
    {"UIButton", "currentTitle"},
    {"UITextField", "text"},
    {"UITextField", "setText:"},
    {"UITextField", "placeholder"},
    {"UISwitch", "isOn"},
    {"UISwitch", "setOn:"},
    {"UISegmentedControl", "numberOfSegments"},
    {"UISegmentedControl", "selectedSegmentIndex"},
    {"UIScrollView", "contentOffset"},
    {"UIScrollView", "setContentOffset:animated:"},
    {"UITextView", "text"},
    {"UITableViewCell", "textLabel"},
    {"UIControl", "sendActionsForControlEvents:"},
    {"UIWebView", "isLoading"},
    {"UIWebView", "stringByEvaluatingJavaScriptFromString:"},
    {"UIWebBrowserView", "tapInteractionWithLocation:"},
    {"UITouch", "phase"},
    {"UITouch", "view"},
    {"UITouch", "window"},
    {"UITouch", "locationInView:"},
    {"UITouch", "timestamp"},
    {"UITouch", "setPhase:"},
    {"UITouch", "_setHidEvent:"},
    {"UIEvent", "allTouches"},
    {"UIEvent", "_clearTouches"},
    {"UIEvent", "_addTouch:forDelayedDelivery:"},
    {"UIEvent", "_setHIDEvent:"},
    {"UIApplication", "keyWindow"},
    {"UIApplication", "windowsWithKeyWindow"},
    {"UIApplication", "_touchesEvent"},
    {"UIApplication", "sendEvent:"},
    {"UIScreen", "bounds"},
    {"UIScreen", "scale"},
    {"UIResponder", "touchesBegan:withEvent:"},
};

INSTANTIATE_TEST_SUITE_P(In, RaisingCall, testing::ValuesIn(raisingCalls), [](const auto& tested) {
  std::string name = std::string(tested.param.className) + "_" + tested.param.selector;
  std::ranges::replace(name, ':', '_');
  return name;
});

TEST_P(RaisingCall, LeavesTheApplicationRunningAndCommandsAnswered) {
  RaiseIn([NSString stringWithUTF8String:GetParam().className],
          sel_registerName(GetParam().selector));
  useEverything();
  EndFaults();
  const auto reports = log_.linesWith("] raised ");
  EXPECT_EQ(std::set<std::string>(reports.begin(), reports.end()).size(), reports.size())
      << "a question is reported once";
  const std::string found = command({{"functionname", "findelements"}, {"tagname", "UIButton"}});
  EXPECT_NE(found.find("elementID"), std::string::npos) << "all is well again: " << found;
}

TEST_F(Faults, OneViewThatRaisesHidesNoOther) {
  RaiseIn(@"UITextField", @selector(placeholder));
  EXPECT_NE(command({{"functionname", "findelements"},
                     {"tagname", "UIButton"},
                     {"accessortype", "text"},
                     {"accessorvalue", "button"}})
                .find("elementID"),
            std::string::npos);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(command({{"functionname", "findelements"},
                       {"tagname", "UITextField"},
                       {"accessortype", "text"},
                       {"accessorvalue", "field"}}),
              "[]");
  }
  EXPECT_EQ(log_.linesWith("-[UITextField placeholder] raised NSRangeException: a fault in placeholder")
                .size(),
            1U);
}

TEST_F(Faults, ALayerThatTakesNoTagHidesNoView) {
  RaiseIn(@"CALayer", @selector(setValue:forUndefinedKey:));
  const std::string found = command({{"functionname", "findelements"}, {"tagname", "UIButton"}});
  EXPECT_NE(found.find("elementID"), std::string::npos) << found;
}

TEST_F(Faults, WhatRaisesWhileItIsActedOnIsAnsweredWithTheReason) {
  const json found = json::parse(command({{"functionname", "findelements"}, {"tagname", "UITextField"}}));
  RaiseIn(@"UITextField", @selector(setText:));
  const std::string reply = command({{"functionname", "sendkeysonelement"},
                                     {"accessorvalue", found[0]["elementID"]},
                                     {"datavalue", "x"}});
  EXPECT_EQ(reply, "[{\"exceptionmsg\":\"a fault in setText:\"}]");
}

TEST_F(Faults, ThatAreNoExceptionsAreTakenAsSuch) {
  const std::string reason = failureOf(platform::as<platform::UITextField>(ref(field_))->setText("x"));
  EXPECT_EQ(reason, "");
  EXPECT_EQ([[field_ text] length], 1U);
}

// --- windows

TEST_F(Faults, AViewOfAnotherWindowIsConvertedOverTheScreen) {
  UIWindow* const other = [[[UIWindow alloc] initWithFrame:NSMakeRect(0, 400, 390, 444)] autorelease];
  UIButton* const button = [[[UIButton alloc] initWithFrame:NSMakeRect(10, 20, 100, 30)] autorelease];
  [other addSubview:button];
  [application_ addWindow:other];
  EXPECT_EQ(platform::convertPoint({0, 0}, ref(button), ref(window_)), (platform::CGPoint{10, 420}));
  EXPECT_EQ(platform::current().application->windowsWithKeyWindow().size(), 2U);
  TakeRecord();
  run(KIFAdditions::tapAtPoint(ref(button), {5, 5}));
  EXPECT_NE(record("touch 1 setWindow").find("UIWindow"), std::string::npos);
}

TEST_F(Faults, AViewThatHasGoneAnswersAsAnEmptyHiddenOne) {
  platform::UIViewRef gone;
  platform::UIViewWeakRef forgotten;
  @autoreleasepool {
    UITextField* const field = add<UITextField>([UITextField class], NSMakeRect(0, 0, 10, 10));
    gone = ref(field);
    EXPECT_EQ(ref(window_)->subviews().size(), 10U);
    UILabel* const label = add<UILabel>([UILabel class], NSMakeRect(0, 0, 10, 10));
    forgotten = ref(label);
    EXPECT_EQ(ref(window_)->subviews().size(), 11U);
    [field removeFromSuperview];
    [label removeFromSuperview];
  }
  EXPECT_TRUE(forgotten.expired());
  EXPECT_TRUE(gone->isHidden());
  EXPECT_FALSE(gone->window());
  EXPECT_FALSE(gone->superview());
  EXPECT_TRUE(gone->subviews().empty());
  EXPECT_EQ(gone->bounds(), platform::CGRect{});
  EXPECT_TRUE(gone->transform().isIdentity());
  EXPECT_EQ(gone->layer().valueForKey("TarniUIVIewGuid"), nullptr);
  EXPECT_FALSE(gone->hitTest({0, 0}));
  EXPECT_EQ(gone->getClass()->name(), "UITextField");
  EXPECT_EQ(failureOf(gone->becomeFirstResponder()), "");
  EXPECT_EQ(ref(window_)->subviews().size(), 9U);
}

}  // namespace
}  // namespace tarni::test
