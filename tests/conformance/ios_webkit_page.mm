// ios-webkit-page PAGE: the web view that answers later, with the page of that file in a browser's
// engine, until the agent searches in it.
#include <dispatch/dispatch.h>

#include "tests/conformance/ChromiumPage.h"
#include "tests/conformance/IosPage.h"

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

@interface WebKitPageDelegate : PageApplication <UIPageEngine> {
  tarni::test::ChromiumPage* page_;
  BOOL isLeft_;
}
@end

@implementation WebKitPageDelegate

- (UIView*)makeWebViewWithFrame:(CGRect)frame {
  NSString* const file = [[[NSProcessInfo processInfo] arguments] lastObject];
  page_ = new tarni::test::ChromiumPage("file://" + std::string([file UTF8String]),
                                        static_cast<int>(frame.size.width),
                                        static_cast<int>(frame.size.height));
  WKWebView* const view = [[[WKWebView alloc] initWithFrame:frame] autorelease];
  [view setEngine:self];
  return view;
}

- (BOOL)isLoading {
  return page_->isLoading();
}

- (void)evaluate:(NSString*)script then:(UIScriptAnswer)handler {
  auto* const answer = new Answer{Block_copy(handler), {}};
  page_->evaluate([script UTF8String], [answer](nlohmann::json told) {
    answer->told = std::move(told);
    dispatch_async_f(dispatch_get_main_queue(), answer, deliver);
  });
  isLeft_ = isLeft_ || [script hasPrefix:@"findElements"];
}

- (void)tapAt:(CGPoint)point {
  page_->tap(point.x, point.y);
}

- (CGPoint)picture {
  return NSMakePoint(159, 269);
}

- (BOOL)isLeft {
  return isLeft_;
}

@end

int main(int argc, char** argv) {
  return UIApplicationMain(argc, argv, nil, @"WebKitPageDelegate");
}
