#import "tests/conformance/IosPage.h"

static const CGRect kPage = {{0, 100}, {390, 600}};

@implementation PageApplication

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
  [window_ addSubview:[self makeWebViewWithFrame:kPage]];
  [window_ makeKeyAndVisible];
  [second makeKeyAndVisible];
  [window_ makeKeyWindow];
  [self touchPicture];
  return YES;
}

- (void)pressedAgain {
  [close_ setTitle:@"again=1" forState:0];
}

- (void)touchPicture {
  if ([self isLeft]) return;
  const CGPoint point = [self picture];
  UIFingerTap(window_, NSMakePoint(kPage.origin.x + point.x, kPage.origin.y + point.y));
  [self pictureIsTapped];
  [self performSelector:@selector(touchPicture) withObject:nil afterDelay:0.5];
}

- (UIView*)makeWebViewWithFrame:(CGRect)frame {
  return [[[UIView alloc] initWithFrame:frame] autorelease];
}

- (CGPoint)picture {
  return NSMakePoint(kPage.size.width / 2, kPage.size.height / 2);
}

- (void)pictureIsTapped {
}

- (BOOL)isLeft {
  return NO;
}

@end
