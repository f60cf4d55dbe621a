// Applications that raise: they live on, a line of the log or an answer says so, and every command
// is answered.
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <stdexcept>

#include "agent/WebView/WebView.h"
#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/IdentityTag.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "agent/recording/RecorderAction.h"
#include "backends/ios/guard/GuardedCall.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "tests/ios/Await.h"
#include "tests/ios/OnIos.h"

// Tells nobody what it is.
@interface SecretiveView : UILabel
@end

@implementation SecretiveView

- (Class)class {
  [NSException raise:NSRangeException format:@"a secret"];
  return Nil;
}

- (BOOL)isKindOfClass:(Class)cls {
  return [self class] == cls;
}

@end

// A view of an application that is written in Objective-C++.
@interface ThrowingView : UIView
@end

@implementation ThrowingView

- (NSArray*)subviews {
  throw std::runtime_error("a view's own");
}

@end

// An array that raises as it is walked.
@interface RaisingArray : NSArray
@end

@implementation RaisingArray

- (NSUInteger)count {
  return 3;
}

- (id)objectAtIndex:(NSUInteger)index {
  [NSException raise:NSRangeException format:@"a bad array"];
  return nil;
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)count {
  [self objectAtIndex:0];
  return 0;
}

@end

namespace tarni::test {
namespace {

using nlohmann::json;

// Every kind of view, in the window.
class Faults : public OnIos {
 protected:
  UILabel* const label_ = add<UILabel>([UILabel class], NSMakeRect(10, 10, 100, 30));
  UIButton* const button_ = add<UIButton>([UIButton class], NSMakeRect(10, 50, 100, 30));
  UITextField* const field_ = add<UITextField>([UITextField class], NSMakeRect(10, 90, 100, 30));
  UISwitch* const switch_ = add<UISwitch>([UISwitch class], NSMakeRect(10, 130, 100, 30));
  UITextView* const text_ = add<UITextView>([UITextView class], NSMakeRect(10, 170, 100, 30));
  UIWebView* const page_ = add<UIWebView>([UIWebView class], NSMakeRect(10, 210, 100, 30));
  WKWebView* const laterPage_ = add<WKWebView>([WKWebView class], NSMakeRect(10, 445, 100, 5));
  UIScrollView* const scroll_ =
      add<UIScrollView>([UIScrollView class], NSMakeRect(10, 250, 100, 100));
  UISegmentedControl* const segments_ =
      [[[UISegmentedControl alloc] initWithItems:@[ @"day", @"week" ]] autorelease];
  UITableViewCell* const cell_ =
      add<UITableViewCell>([UITableViewCell class], NSMakeRect(10, 400, 100, 44));

  Faults() {
    UIWaitsAreSkipped = YES;
    // Small: most of the time goes into pictures.
    [window_ setFrame:NSMakeRect(0, 0, 120, 450)];
    [label_ setText:@"label"];
    [button_ setTitle:@"button" forState:0];
    [field_ setPlaceholder:@"field"];
    [segments_ setFrame:NSMakeRect(10, 360, 100, 30)];
    [segments_ setSelectedSegmentIndex:0];
    [window_ addSubview:segments_];
    KIFAdditions::loadUIApplication(platform::uikit::UIApplication);
    [[label_ layer] addAnimation:[[[CAAnimation alloc] init] autorelease] forKey:@"move"];
    [label_ addGestureRecognizer:[[[UITapGestureRecognizer alloc] initWithTarget:nil action:NULL]
                                     autorelease]];
  }

  std::string command(const json& keys) {
    const std::string reply = answer(keys.dump() + "\r\n");
    told_ += reply;
    return reply;
  }
  bool isFound(const std::string& tag) {
    return command({{"functionname", "findelements"}, {"tagname", tag}}).find("elementID") !=
           std::string::npos;
  }
  void attempt(const std::function<void()>& use) { told_ += failureOf(use); }

  // Everything that a host tool can ask for, with every element. Each answer is JSON.
  void useEverything() {
    const std::string described = command({{"functionname", "ai_findelements"}, {"tagname", ""}});
    ASSERT_TRUE(json::accept(described)) << described;
    for (const char* name : {"ai_getscreensnapshot", "swipeto", "swipereset"}) {
      EXPECT_TRUE(json::accept(command({{"functionname", name}}))) << name;
    }
    for (const char* name :
         {"gettext", "getwidth", "getheight", "isenabled", "isdisplayed", "isselected",
          "clickelement", "sendkeysonelement", "swipeon", "highlight"}) {
      for (const json& element : json::parse(described)) {
        if (!element.contains("elementID")) continue;
        const std::string reply = command(
            {{"functionname", name}, {"accessorvalue", element["elementID"]}, {"datavalue", "up"}});
        EXPECT_TRUE(json::accept(reply)) << name << ": " << reply;
      }
    }
  }

  // That, and what no command asks for: gestures, questions of the seam, a page, what is recorded.
  void useAll();
  void askTheRest();
  void tapAsOlderSystems();
  void evaluatePage();
  void recordFinger();

  // What the agent answered, and the reasons of what failed.
  std::string told_;
};

void Faults::useAll() {
  useEverything();
  for (const auto use : {&Faults::askTheRest, &Faults::tapAsOlderSystems, &Faults::evaluatePage,
                         &Faults::recordFinger}) {
    attempt([&] { (this->*use)(); });
  }
}

void Faults::askTheRest() {
  const platform::UIViewRef label = ref(label_);
  const auto segments = platform::as<platform::UISegmentedControl>(ref(segments_));
  platform::UIApplication& application = *platform::current().application;
  const std::function<void()> uses[] = {
      [&] { label->tag(); },
      [&] { label->center(); },
      [&] { label->transform(); },
      [&] { label->accessibilityLanguage(); },
      [&] { segments->titleForSegmentAtIndex(segments->selectedSegmentIndex()); },
      [&] { label->valueForKey("superview"); },
      [&] { label->layer().isHidden(); },
      [&] { label->layer().superlayer(); },
      [&] { label->layer().sublayers(); },
      [&] { label->layer().animationKeys(); },
      [&] { label->layer().animationForKey("move"); },
      [&] { label->layer().setSpeed(label->layer().speed()); },
      [&] { application.makeTouch()->tapCount(); },
      [&] { application.openURL("tel:1"); },
      [&] {
        const auto alert = platform::current().alerts->show("hello", std::nullopt, std::nullopt);
        if (alert) alert->dismissWithClickedButtonIndex(0, false);
      },
      [&] {
        const platform::UIImageRef image = awaitImage(label->drawViewHierarchy());
        if (image && image->size() != platform::CGSize{}) image->crop({{0, 0}, {10, 10}});
      }};
  for (const auto& use : uses) attempt(use);
}

void Faults::tapAsOlderSystems() {
  for (const NSInteger version : {12, 7}) {
    UISystemVersion = {version, 0, 0};
    attempt([&] { run(KIFAdditions::tapAtPoint(ref(button_), {5, 5})); });
    attempt([&] { run(KIFAdditions::tapAtPoint(ref(page_), {5, 5})); });
  }
  UISystemVersion = {12, 0, 0};
}

void Faults::evaluatePage() {
  tarni::WebView bridge;
  bridge.performRecorderAndPlaybackInjection();
  UIRunFor(0.01);
  attempt([&] { run(bridge.callJavaScriptFunctionWithoutOutPut(ref(page_), "f()")); });
  attempt([&] {
    if (platform::as<platform::UIWebView>(ref(laterPage_))->isLoading()) return;
    run(bridge.callJavaScriptFunctionWithoutOutPut(ref(laterPage_), "f()"));
  });
}

// The hook before the application's own code, and what it leaves to be recorded.
void Faults::recordFinger() {
  GlobalVars::sharedInstance().set_isPlaybackStarted("false");
  attempt([&] {
    UIViewsManager manager;
    manager.GetAllViews(ref(window_), true);
  });
  const auto finger = [](void* window) {
    UIFingerTap(static_cast<UIWindow*>(window), NSMakePoint(60, 65));
  };
  TarniRaised raised{};
  tarni_guardedCall(finger, window_, &raised);
  told_ += raised.reason;
  GlobalVars::sharedInstance().set_isPlaybackStarted("true");
  attempt([&] { RecorderAction().describeStep({"Click", ref(button_), "", {5, 5}}); });
}

struct Asked {
  std::string className;
  std::string selector;

  NSString* classNamed() const { return [NSString stringWithUTF8String:className.c_str()]; }
  SEL named() const { return sel_registerName(selector.c_str()); }
};

// For the names of the cases.
void PrintTo(const Asked& asked, std::ostream* output) {
  *output << "-[" << asked.className << " " << asked.selector << "]";
}

std::string nameOf(const testing::TestParamInfo<Asked>& tested) {
  std::string name = tested.param.className + "_" + tested.param.selector;
  std::ranges::replace(name, ':', '_');
  return name;
}

// What is called while all is used, by class.
std::vector<Asked> allThatIsAsked() {
  static constexpr std::pair<const char*, const char*> kCalled[] = {
      {"UIView", "superview subviews window layer bounds frame convertPoint:toView: "
                 "convertPoint:fromView: hitTest:withEvent: isHidden isOpaque clipsToBounds "
                 "isUserInteractionEnabled gestureRecognizers "
                 "drawViewHierarchyInRect:afterScreenUpdates: tag center transform valueForKey: "
                 "isFirstResponder becomeFirstResponder accessibilityIdentifier "
                 "accessibilityLanguage accessibilityValue accessibilityLabel accessibilityHint"},
      {"CALayer", "setValue:forUndefinedKey: borderWidth setBorderWidth: "
                  "borderColor setBorderColor: speed setSpeed: isHidden superlayer sublayers "
                  "animationKeys animationForKey:"},
      {"CAAnimation", "duration"},
      {"CATransaction", "flush"},
      {"UIAlertView", "initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles: show "
                      "dismissWithClickedButtonIndex:animated:"},
      {"UILabel", "text"},
      {"UIButton", "currentTitle"},
      {"UITextField", "text setText: placeholder canBecomeFirstResponder"},
      {"UISwitch", "isOn setOn:"},
      {"UISegmentedControl", "numberOfSegments selectedSegmentIndex titleForSegmentAtIndex:"},
      {"UIScrollView", "contentOffset setContentOffset:animated:"},
      {"UITextView", "text"},
      {"UITableViewCell", "text textLabel"},
      {"UIWebBrowserView", "tapInteractionWithLocation:"},
      {"UITouch", "phase view window locationInView: timestamp setWindow: setTapCount: "
                  "_setLocationInWindow:resetPrevious: setView: setPhase: _setIsFirstTouchForView: "
                  "setIsTap: setTimestamp: setGestureView: _setHidEvent: tapCount init"},
      {"UIEvent", "allTouches _setGSEvent: _setTimestamp: _clearTouches "
                  "_addTouch:forDelayedDelivery: _setHIDEvent: type description"},
      {"UIApplication", "keyWindow windows _touchesEvent sendEvent: sharedApplication "
                        "openURL:options:completionHandler: canOpenURL:"},
      {"UIScreen", "bounds scale"},
      {"UIResponder", "touchesBegan:withEvent: canBecomeFirstResponder"},
      {"UIControl", "sendActionsForControlEvents:"},
      {"UIWebView", "isLoading stringByEvaluatingJavaScriptFromString:"},
      {"WKWebView", "isLoading evaluateJavaScript:completionHandler:"},
      {"UIImage", "size scale drawAtPoint:"},
  };
  std::vector<Asked> calls;
  for (const auto& [className, selectors] : kCalled) {
    std::istringstream words(selectors);
    for (std::string selector; words >> selector;) calls.push_back({className, selector});
  }
  return calls;
}

// Of those, what is answered with an object.
std::vector<Asked> askedForObjects() {
  std::vector<Asked> asked = allThatIsAsked();
  std::erase_if(asked, [](const Asked& each) {
    const Class cls = objc_lookUpClass(each.className.c_str());
    const Method method = class_getInstanceMethod(cls, each.named());
    const bool makes = each.selector.starts_with("init");
    return makes || !method || method_getTypeEncoding(method)[0] != '@';
  });
  return asked;
}

class Question : public Faults, public testing::WithParamInterface<Asked> {};

INSTANTIATE_TEST_SUITE_P(To, Question, testing::ValuesIn(allThatIsAsked()), nameOf);

TEST_P(Question, ThatRaisesLeavesTheApplicationRunningAndCommandsAnswered) {
  RaiseIn(GetParam().classNamed(), GetParam().named());
  useAll();
  EXPECT_GT(RaisedFaults(), 0) << "nobody has called it";
  EndFaults();
  const std::string reason = "a fault in " + GetParam().selector;
  EXPECT_TRUE(!log_.linesWith(reason).empty() || told_.find(reason) != told_.npos) << "silent";
  const auto reports = log_.linesWith("] raised ");
  EXPECT_EQ(std::set<std::string>(reports.begin(), reports.end()).size(), reports.size())
      << "a question is reported once";
  EXPECT_TRUE(isFound("UIButton")) << "all is well again";
}

class Answer : public Question {};

INSTANTIATE_TEST_SUITE_P(From, Answer, testing::ValuesIn(askedForObjects()), nameOf);

TEST_P(Answer, ThatIsRubbishLeavesTheApplicationRunningAndCommandsAnswered) {
  const id answers[] = { @42, @[ [NSNull null] ], [[[RaisingArray alloc] init] autorelease] };
  for (const id answer : answers) {
    AnswerIn(GetParam().classNamed(), GetParam().named(), answer);
    useAll();
    EndFaults();
    EXPECT_TRUE(isFound("UIButton")) << "all is well again";
  }
}

TEST_F(Faults, WhatIsNoViewStandsAmongNoViews) {
  AnswerIn(@"UIView", @selector(subviews), (@[ button_, [NSNull null], label_ ]));
  const auto shown = ref(scroll_)->subviews();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_EQ(shown[0], ref(button_));
  EXPECT_EQ(shown[1], ref(label_));
  EndFaults();
  AnswerIn(@"UIView", @selector(subviews), @42);
  EXPECT_TRUE(ref(scroll_)->subviews().empty());
  EXPECT_EQ(log_.linesWith("-[UIScrollView subviews] raised NSInvalidArgumentException").size(),
            1U);
}

TEST_F(Faults, AViewThatThrowsWhatIsCppsHidesNoOther) {
  ThrowingView* const thrower =
      [[[ThrowingView alloc] initWithFrame:CGRectMake(0, 0, 10, 10)] autorelease];
  [[button_ superview] addSubview:thrower];
  EXPECT_TRUE(isFound("UIButton"));
  EXPECT_EQ(log_.linesWith("-[ThrowingView subviews] threw a view's own").size(), 1U);
  [thrower removeFromSuperview];
}

TEST_F(Faults, AViewThatRaisesWhenAskedWhatItIsIsAViewOfItsClass) {
  [window_ addSubview:[[[SecretiveView alloc] initWithFrame:NSMakeRect(0, 0, 9, 9)] autorelease]];
  EXPECT_TRUE(isFound("SecretiveView"));
  EXPECT_EQ(log_.linesWith("-[SecretiveView class] raised").size(), 1U);
  EXPECT_TRUE(platform::as<platform::UILabel>(ref([[window_ subviews] lastObject])));
}

TEST_F(Faults, AViewWithoutALayerHasOneOnceItIsMade) {
  AnswerIn(@"UIView", @selector(layer), nil);
  ref(label_)->layer().setValueForKey("lost", "key");
  EXPECT_EQ(ref(button_)->layer().valueForKey("key"), nullptr) << "it is another view's";
  EndFaults();
  ref(label_)->layer().setValueForKey("kept", "key");
  EXPECT_STREQ([[[label_ layer] valueForKey:@"key"] UTF8String], "kept");
}

// --- windows

TEST_F(Faults, AViewOfAnotherWindowIsConvertedOverTheScreen) {
  UIWindow* const other =
      [[[UIWindow alloc] initWithFrame:NSMakeRect(0, 400, 390, 444)] autorelease];
  UIButton* const button =
      [[[UIButton alloc] initWithFrame:NSMakeRect(10, 20, 100, 30)] autorelease];
  [other addSubview:button];
  [application_ addWindow:other];
  EXPECT_EQ(platform::convertPoint({0, 0}, ref(button), ref(window_)),
            (platform::CGPoint{10, 420}));
  EXPECT_EQ(platform::current().application->windowsWithKeyWindow().size(), 2U);
  TakeRecord();
  run(KIFAdditions::tapAtPoint(ref(button), {5, 5}));
  EXPECT_NE(record({"touch 1 setWindow"}).find("UIWindow"), std::string::npos);
}

TEST_F(Faults, AViewThatHasGoneAnswersAsAnEmptyHiddenOne) {
  platform::UIViewRef gone;
  platform::UIViewWeakRef forgotten;
  @autoreleasepool {
    UITextField* const field = add<UITextField>([UITextField class], NSMakeRect(0, 0, 10, 10));
    gone = ref(field);
    EXPECT_EQ(ref(window_)->subviews().size(), 11U);
    UILabel* const label = add<UILabel>([UILabel class], NSMakeRect(0, 0, 10, 10));
    forgotten = ref(label);
    EXPECT_EQ(ref(window_)->subviews().size(), 12U);
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
  EXPECT_FALSE(gone->layer().tag(kRecordingTag));
  EXPECT_FALSE(gone->hitTest({0, 0}));
  EXPECT_EQ(gone->getClass()->name(), "UITextField");
  EXPECT_EQ(failureOf(gone->becomeFirstResponder()), "");
  EXPECT_EQ(ref(window_)->subviews().size(), 10U);
}

}  // namespace
}  // namespace tarni::test
