#import "tests/conformance/IosPage.h"

static const CGRect kPage = {{0, 100}, {390, 600}};

// Stars to give, drawn by itself and told to accessibility, in a group that tells how many were
// given. Only three are on offer.
@interface StarsView : UIView {
  UIAccessibilityElement* group_;
}
@end

@implementation StarsView

static const CGFloat kStar = 50;

- (id)initWithFrame:(CGRect)frame {
  if (!(self = [super initWithFrame:frame])) return nil;
  group_ = [self elementAt:frame label:@"Stars"];
  NSMutableArray* const stars = [NSMutableArray array];
  for (int i = 0; i < 5; ++i) {
    const CGRect place =
        NSMakeRect(frame.origin.x + i * kStar, frame.origin.y, kStar, frame.size.height);
    UIAccessibilityElement* const star =
        [self elementAt:place label:[NSString stringWithFormat:@"Star %d", i + 1]];
    if (i >= 3) [star setAccessibilityTraits:UIAccessibilityTraitNotEnabled];
    [stars addObject:star];
  }
  [group_ setAccessibilityElements:stars];
  // Neither a view nor what it stands in is listed below it.
  [[stars lastObject] setAccessibilityElements:@[ group_, self ]];
  return self;
}

- (UIAccessibilityElement*)elementAt:(CGRect)place label:(NSString*)label {
  UIAccessibilityElement* const element =
      [[UIAccessibilityElement alloc] initWithAccessibilityContainer:self];
  [element setAccessibilityFrame:place];
  [element setAccessibilityLabel:label];
  return element;
}

- (NSInteger)accessibilityElementCount {
  return 1;
}

- (id)accessibilityElementAtIndex:(NSInteger)index {
  return group_;
}

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
  const CGPoint point = [[touches anyObject] locationInView:self];
  [group_ setAccessibilityValue:[NSString stringWithFormat:@"%d", 1 + (int)(point.x / kStar)]];
}

@end

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
  [window_ addSubview:[[[StarsView alloc] initWithFrame:NSMakeRect(20, 720, 250, 50)] autorelease]];
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
