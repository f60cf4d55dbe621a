// The web view that answers at once, with a scripted page in it, until commands come.
#include "tests/conformance/IosPage.h"
#include "tests/conformance/OrderPage.h"

@interface PageDelegate : PageApplication <UIScriptEngine> {
  UIWebView* view_;
  tarni::test::OrderPage* page_;
}
@end

@implementation PageDelegate

- (NSString*)evaluate:(NSString*)script {
  return [NSString stringWithUTF8String:page_->evaluate([script UTF8String]).c_str()];
}

- (UIView*)makeWebViewWithFrame:(CGRect)frame {
  view_ = [[UIWebView alloc] initWithFrame:frame];
  page_ = new tarni::test::OrderPage([self] { [self load]; });
  [view_ setEngine:self];
  return view_;
}

- (void)load {
  [view_ setLoading:YES];
  [self performSelector:@selector(showNext) withObject:nil afterDelay:0.3];
}

- (void)showNext {
  page_->showNext();
  [view_ setLoading:NO];
}

- (BOOL)isLeft {
  return page_->isPlayed();
}

// The page tells of it once the agent has the picture of the touch.
- (void)pictureIsTapped {
  [self performSelector:@selector(pressPicture) withObject:nil afterDelay:0.25];
}

- (void)pressPicture {
  page_->pressPicture();
}

@end

int main(int argc, char** argv) { return UIApplicationMain(argc, argv, nil, @"PageDelegate"); }
