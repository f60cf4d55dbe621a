// The web view whose pages answer later. What is in it stands in views of WebKit's own.
#import "tests/ios/uikit/State.h"

@interface WKContentView : UIView
@end

@implementation WKContentView

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
  UIView* view = self;
  while (![view isKindOfClass:[WKWebView class]]) view = [view superview];
  [[(WKWebView*)view engine] tapAt:[[touches anyObject] locationInView:self]];
}

@end

@implementation WKWebView

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    const CGRect all = NSMakeRect(0, 0, frame.size.width, frame.size.height);
    UIScrollView* const scroll = [[[UIScrollView alloc] initWithFrame:all] autorelease];
    [scroll addSubview:[[[WKContentView alloc] initWithFrame:all] autorelease]];
    [self addSubview:scroll];
  }
  return self;
}

HELD(id<UIPageEngine>, engine, setEngine)
KEPT(NSURL*, URL, setURL)

- (BOOL)isLoading {
  return [[self engine] isLoading];
}

- (void)evaluateJavaScript:(NSString*)script completionHandler:(UIScriptAnswer)handler {
  if ([self engine]) {
    [[self engine] evaluate:script then:handler];
  } else {
    handler(nil, nil);
  }
}

@end
