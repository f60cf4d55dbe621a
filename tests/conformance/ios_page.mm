// ios-page [PAGE [KIND]]: an application of UIKit's with native controls and a second window;
// between them the page of that file in a browser's engine, in a web view of that kind: UIWebView,
// whose scripts are answered at once, or WKWebView. A person taps the picture of the page every
// half a second, until the agent searches in it.
#include <dispatch/dispatch.h>

#include "tests/conformance/ChromiumPage.h"
#import "tests/ios/uikit/UIKit.h"

static const CGRect kPage = {{0, 100}, {390, 600}};
static const CGPoint kPicture = {159, 269};

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

namespace {

// What a page says to a script, on its way to the main thread.
struct Answer {
  UIScriptAnswer handler;
  nlohmann::json told;
};

// As WebKit has them: null for null, an error for what throws or has no value.
id resultOf(const nlohmann::json& told) {
  const nlohmann::json value = told.value("result", nlohmann::json::object())["value"];
  if (value.is_boolean()) return [NSNumber numberWithBool:value.get<bool>()];
  if (value.is_number()) return [NSNumber numberWithDouble:value.get<double>()];
  return value.is_string() ? [NSString stringWithUTF8String:value.get<std::string>().c_str()] : nil;
}

void deliver(void* context) {
  auto* const answer = static_cast<Answer*>(context);
  NSError* const thrown = answer->told.contains("exceptionDetails")
                              ? [NSError errorWithDomain:@"WKErrorDomain" code:4 userInfo:nil]
                              : nil;
  answer->handler(thrown ? nil : resultOf(answer->told), thrown);
  Block_release(answer->handler);
  delete answer;
}

}  // namespace

@interface PageApplication : NSObject <UIApplicationDelegate, UIPageEngine> {
  UIWindow* window_;
  UIButton* close_;
  tarni::test::ChromiumPage* page_;
  BOOL isAnsweredAtOnce_;
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
  [window_ makeKeyAndVisible];
  [second makeKeyAndVisible];
  [window_ makeKeyWindow];
  NSArray* const words = [[NSProcessInfo processInfo] arguments];
  if ([words count] > 2) [self show:[words objectAtIndex:1] in:[words objectAtIndex:2]];
  return YES;
}

- (void)pressedAgain {
  [close_ setTitle:@"again=1" forState:0];
}

- (void)show:(NSString*)file in:(NSString*)kind {
  page_ = new tarni::test::ChromiumPage("file://" + std::string([file UTF8String]),
                                        static_cast<int>(kPage.size.width),
                                        static_cast<int>(kPage.size.height));
  isAnsweredAtOnce_ = [kind isEqual:@"UIWebView"];
  id const view = [[[NSClassFromString(kind) alloc] initWithFrame:kPage] autorelease];
  [view setEngine:self];
  [window_ addSubview:view];
  [self touchPicture];
}

- (void)touchPicture {
  if (page_->isSearched()) return;
  UIFingerTap(window_, NSMakePoint(kPage.origin.x + kPicture.x, kPage.origin.y + kPicture.y));
  [self performSelector:@selector(touchPicture) withObject:nil afterDelay:0.5];
}

- (BOOL)isLoading {
  return page_->isLoading();
}

- (void)evaluate:(NSString*)script then:(UIScriptAnswer)handler {
  if (isAnsweredAtOnce_) {
    const std::string text = page_->evaluateAtOnce([script UTF8String]);
    handler([NSString stringWithUTF8String:text.c_str()], nil);
    return;
  }
  auto* const answer = new Answer{Block_copy(handler), {}};
  page_->evaluate([script UTF8String], [answer](nlohmann::json told) {
    answer->told = std::move(told);
    dispatch_async_f(dispatch_get_main_queue(), answer, deliver);
  });
}

- (void)tapAt:(CGPoint)point {
  page_->tap(point.x, point.y);
}

@end

int main(int argc, char** argv) { return UIApplicationMain(argc, argv, nil, @"PageApplication"); }
