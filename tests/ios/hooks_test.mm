// The methods of UIKit's that the agent exchanges, among the exchanges and subclasses of
// applications.
#include <stdexcept>

#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"
#include "agent/core/startup/UIViewController_UIViewController.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/interaction/Swizzle.h"
#include "agent/interaction/UIApplication_KIFAdditions_RunLoop.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "backends/ios/guard/GuardedCall.h"
#include "platform/UIKit/Classes.h"
#include "tests/ios/Await.h"
#include "tests/ios/OnIos.h"

static int ownEvents = 0;

@interface OwnApplication : UIApplication
@end

@implementation OwnApplication

- (void)sendEvent:(UIEvent*)event {
  ++ownEvents;
  [super sendEvent:event];
}

@end

@interface UIApplication (Own)
- (void)ownSendEvent:(UIEvent*)event;
@end

@implementation UIApplication (Own)

- (void)ownSendEvent:(UIEvent*)event {
  ++ownEvents;
  [self ownSendEvent:event];
}

@end

@interface OwnViewController : UIViewController
@end

@implementation OwnViewController

- (void)viewDidAppear:(BOOL)animated {
  ++ownEvents;
  [super viewDidAppear:animated];
}

@end

@interface Presses : NSObject {
 @public
  int count;
}
@end

@implementation Presses

- (void)press {
  ++count;
}

- (void)raise {
  [NSException raise:@"Own" format:@"raised by the application"];
}

- (void)throwText {
  throw std::runtime_error("thrown by the application");
}

@end

namespace tarni::test {
namespace {

class Hooks : public OnIos {
 protected:
  static void loadAgent() { KIFAdditions::loadUIApplication(platform::uikit::UIApplication); }
  static void exchangeOwn() {
    method_exchangeImplementations(
        class_getInstanceMethod([UIApplication class], @selector(sendEvent:)),
        class_getInstanceMethod([UIApplication class], @selector(ownSendEvent:)));
  }

 public:
  void tapButton(SEL action = @selector(press)) {
    UIButton* const button = add<UIButton>([UIButton class], NSMakeRect(40, 100, 100, 50));
    [button addTarget:presses_ action:action forControlEvents:UIControlEventTouchUpInside];
    UIFingerTap(window_, NSMakePoint(60, 125));
  }

 protected:
  // Began and Ended: each seen once by the recorder, the application's own method and the system's.
  void expectEachOnce(int own) {
    EXPECT_EQ(log_.linesWith("Clicked").size(), 2U);
    EXPECT_EQ(ownEvents, own);
    EXPECT_EQ(record({"sendEvent:"}),
              "sendEvent: (phase 0 at 60 125)\nsendEvent: (phase 3 at 60 125)\n");
    EXPECT_EQ(presses_->count, 1);
  }

  Presses* const presses_ = [[Presses alloc] init];
};

TEST_F(Hooks, TheRecorderSeesEachEventOnce) {
  loadAgent();
  tapButton();
  expectEachOnce(0);
}

TEST_F(Hooks, AnApplicationMayExchangeTheMethodBeforeTheAgent) {
  exchangeOwn();
  loadAgent();
  tapButton();
  expectEachOnce(2);
}

TEST_F(Hooks, AnApplicationMayExchangeTheMethodAfterTheAgent) {
  loadAgent();
  exchangeOwn();
  tapButton();
  expectEachOnce(2);
}

TEST_F(Hooks, AnApplicationMayExchangeTheMethodBack) {
  exchangeOwn();
  loadAgent();
  exchangeOwn();
  exchangeOwn();
  tapButton();
  expectEachOnce(2);
}

TEST_F(Hooks, AnApplicationMayHaveAClassOfItsOwn) {
  UIApplicationMake(@"OwnApplication");
  [window_ makeKeyAndVisible];
  loadAgent();
  tapButton();
  expectEachOnce(2);
}

TEST_F(Hooks, WhatTheApplicationRaisesReachesItAsWithoutTheAgent) {
  loadAgent();
  TarniRaised raised{};
  const auto call = [](void* context) {
    static_cast<Hooks*>(context)->tapButton(@selector(raise));
  };
  EXPECT_FALSE(tarni_guardedCall(call, this, &raised));
  EXPECT_STREQ(raised.reason, "raised by the application");
  EXPECT_EQ(log_.linesWith("Clicked").size(), 2U);
}

TEST_F(Hooks, WhatTheApplicationThrowsReachesItAsWithoutTheAgent) {
  loadAgent();
  EXPECT_EQ(failureOf([&] { tapButton(@selector(throwText)); }), "thrown by the application");
  EXPECT_EQ(log_.linesWith("Clicked").size(), 2U);
  const platform::UIViewRef button = ref([[window_ subviews] lastObject]);
  EXPECT_EQ(failureOf(KIFAdditions::tapAtPoint(button, {5, 5})), "thrown by the application");
}

TEST_F(Hooks, ControllersOfAnyClassTellWhetherTheyHaveAppeared) {
  platform::Class controllers = platform::uikit::UIViewController;
  UIViewController::load(controllers);
  OwnViewController* const controller = [[[OwnViewController alloc] init] autorelease];
  [controller viewWillAppear:YES];
  EXPECT_EQ(GlobalVars::sharedInstance()._viewControllerLoaded(), "LOADING");
  [controller viewDidAppear:YES];
  EXPECT_EQ(GlobalVars::sharedInstance()._viewControllerLoaded(), "LOADED");
  EXPECT_EQ(ownEvents, 1);
}

TEST_F(Hooks, TheModesOfTheRunLoopAreFollowedAndPassedOn) {
  KIFAdditions::swizzleRunLoop();
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "kCFRunLoopDefaultMode");
  [application_ pushRunLoopMode:@"Tracking"];
  [application_ pushRunLoopMode:@"Other" requester:application_];
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "Other");
  [application_ popRunLoopMode:@"Other" requester:application_];
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "Tracking");
  [application_ popRunLoopMode:@"Tracking"];
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "kCFRunLoopDefaultMode");
  EXPECT_EQ(record(), "pushRunLoopMode: Tracking\npushRunLoopMode: Other requester:\n"
                      "popRunLoopMode: Other requester:\npopRunLoopMode: Tracking\n");
}

TEST_F(Hooks, TheModesOfTheRunLoopAreTheApplicationObjects) {
  KIFAdditions::KIF_runLoopModes().emplace_back("Tracking");
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "Tracking");
  UIApplicationMake(@"UIApplication");
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "kCFRunLoopDefaultMode");
}

TEST_F(Hooks, AMethodOfAShapeThatNoneHasIsNamed) {
  EXPECT_FALSE(platform::current().runtime->class_addMethod(
      platform::uikit::UIApplication, "answer", [](const auto&) {}, "i@:"));
  EXPECT_EQ(log_.linesWith("-[UIApplication answer] cannot be hooked").size(), 1U);
}

TEST_F(Hooks, AMethodThatTakesOtherArgumentsThanItsHookStaysAsItIs) {
  platform::current().runtime->class_addMethod(
      platform::uikit::UIApplication, "ownHook:", [](const auto&) {}, "v@:B");
  Swizzle(platform::uikit::UIApplication, "sendEvent:", "ownHook:");
  tapButton();
  EXPECT_EQ(presses_->count, 1);
  EXPECT_EQ(log_.linesWith("sendEvent: takes other arguments here than ownHook:").size(), 1U);
}

}  // namespace
}  // namespace tarni::test
