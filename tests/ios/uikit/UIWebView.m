// What newer systems no longer have: web views that answer at once, and alert views.
#import "tests/ios/uikit/State.h"

@implementation UIWebBrowserView

- (void)keepTap:(id)location {
  if (!kept(self, "taps")) keep(self, "taps", [NSMutableArray array]);
  [kept(self, "taps") addObject:location];
}

- (void)tapInteractionWithLocation:(CGPoint)point {
  [self keepTap:NSStringFromPoint(point)];
}

// The method would look for a point where the object is.
- (id)performSelector:(SEL)selector withObject:(id)object {
  if (!sel_isEqual(selector, @selector(tapInteractionWithLocation:))) {
    return [super performSelector:selector withObject:object];
  }
  [self keepTap:object];
  return nil;
}

- (NSArray*)tapLocations {
  return kept(self, "taps");
}

@end

// The inside of a web view is not a view.
@interface UIWebViewInternal : NSObject {
  UIWebBrowserView* browserView;
}
@end

@implementation UIWebViewInternal

- (id)init {
  if ((self = [super init])) browserView = [[UIWebBrowserView alloc] init];
  return self;
}

- (void)dealloc {
  [browserView release];
  [super dealloc];
}

@end

@implementation UIWebView

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    _internal = [[UIWebViewInternal alloc] init];
  }
  return self;
}

- (void)dealloc {
  [_internal release];
  [super dealloc];
}

HELD(id<UIPageEngine>, engine, setEngine)
- (BOOL)isLoading {
  return [[self engine] isLoading];
}

- (NSString*)stringByEvaluatingJavaScriptFromString:(NSString*)script {
  __block NSString* said = @"";
  [[self engine] evaluate:script
                     then:^(id result, NSError* error) {
                       said = result;
                     }];
  return said;
}

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
  [[self engine] tapAt:[[touches anyObject] locationInView:self]];
}

@end

static NSMutableArray* shownAlerts(void) {
  static NSMutableArray* all = nil;
  if (!all) all = [[NSMutableArray alloc] init];
  return all;
}

@implementation UIAlertView

+ (NSArray*)shown {
  return shownAlerts();
}

- (id)initWithTitle:(NSString*)title
              message:(NSString*)message
             delegate:(id)delegate
    cancelButtonTitle:(NSString*)cancelButtonTitle
    otherButtonTitles:(NSString*)otherButtonTitles, ... {
  if ((self = [super initWithFrame:NSMakeRect(0, 0, 0, 0)])) keep(self, "message", message);
  return self;
}

- (void)show {
  [shownAlerts() addObject:self];
}
- (NSString*)message {
  return kept(self, "message");
}
- (void)dismissWithClickedButtonIndex:(NSInteger)index animated:(BOOL)animated {
}

@end
