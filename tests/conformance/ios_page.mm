// An application of UIKit's with a web view between native controls and a scripted page in it. A
// person presses its picture every half a second until commands come.
#include "tests/conformance/OrderPage.h"
#import "tests/ios/uikit/UIKit.h"

@interface PageDelegate : NSObject <UIApplicationDelegate, UIScriptEngine> {
  UIWindow* window_;
  UIButton* close_;
  UIWebView* view_;
  tarni::test::OrderPage* page_;
}
@end

@implementation PageDelegate

- (NSString*)evaluate:(NSString*)script {
  return [NSString stringWithUTF8String:page_->evaluate([script UTF8String]).c_str()];
}

- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(NSDictionary*)options {
  (void)application;
  (void)options;
  window_ = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  UIButton* const close = [[UIButton alloc] initWithFrame:NSMakeRect(20, 780, 350, 44)];
  [close setTitle:@"Close order" forState:0];
  [window_ addSubview:[close autorelease]];
  close_ = close;
  UIWindow* const second = [[UIWindow alloc] initWithFrame:NSMakeRect(20, 20, 350, 60)];
  UIButton* const again = [[UIButton alloc] initWithFrame:NSMakeRect(10, 10, 200, 40)];
  [again setTitle:@"Press here" forState:0];
  [again addTarget:self
                action:@selector(pressedAgain)
      forControlEvents:UIControlEventTouchUpInside];
  [second addSubview:[again autorelease]];
  view_ = [[UIWebView alloc] initWithFrame:NSMakeRect(0, 100, 390, 600)];
  [window_ addSubview:view_];
  page_ = new tarni::test::OrderPage([self] { [self load]; });
  [view_ setEngine:self];
  [window_ makeKeyAndVisible];
  [second makeKeyAndVisible];
  [window_ makeKeyWindow];
  [self touchPicture];
  return YES;
}

- (void)pressedAgain {
  [close_ setTitle:@"again=1" forState:0];
}

- (void)load {
  [view_ setLoading:YES];
  [self performSelector:@selector(showNext) withObject:nil afterDelay:0.3];
}

- (void)showNext {
  page_->showNext();
  [view_ setLoading:NO];
}

- (void)touchPicture {
  if (page_->isPlayed()) return;
  UIFingerTap(window_, NSMakePoint(195, 400));
  // The page tells of it once the agent has the picture of the touch.
  [self performSelector:@selector(pressPicture) withObject:nil afterDelay:0.25];
  [self performSelector:@selector(touchPicture) withObject:nil afterDelay:0.5];
}

- (void)pressPicture {
  page_->pressPicture();
}

@end

int main(int argc, char** argv) { return UIApplicationMain(argc, argv, nil, @"PageDelegate"); }
