#include "backends/ios/controls/LaterPage.h"
#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/RuntimeClass.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/system/RunLoopWatch.h"
#include "backends/ios/views/Kinds.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

// The errors of WebKit's after which a view has no page.
constexpr NSInteger kProcessTerminated = 2;
constexpr NSInteger kViewInvalidated = 3;

bool isPageGone(NSError* error) {
  const bool isWebKits = [[error domain] isEqualToString:@"WKErrorDomain"];
  return isWebKits && ([error code] == kProcessTerminated || [error code] == kViewInvalidated);
}

// As the older web view words a result: empty for what throws, and for what is not a plain value.
std::string wordsFor(id result) {
  if (isKindOf(result, object_getClass([NSNumber numberWithBool:YES])))
    return [result boolValue] ? "true" : "false";
  return toTextOrEmpty(isKindOf(result, [NSNumber class]) ? [result description] : result);
}

class WKWebView : public View, public platform::UIWebView {
 public:
  using View::View;

  bool isLoading() const override {
    return ask("isLoading", [&]() -> bool { return [as<NSObject>() isLoading]; });
  }

  bool isSilent() const override { return page().isSilent(); }

  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override {
    return page().evaluate(
        [view = Owned(as<NSObject>()), script = std::move(script)](LaterPage::Take take) {
          if (!view) return take(std::nullopt);
          // Outside of the guard, whose captures are references and would not outlive it.
          const LaterPage::Take told = std::move(take);
          const auto answered = ^(id result, NSError* error) {
            noteWork(platform::kMainQueueAlone);
            told(isPageGone(error) ? std::nullopt : std::optional(wordsFor(result)));
          };
          guarded([&] {
            [view.get() evaluateJavaScript:toNSString(script) completionHandler:answered];
          });
        });
  }

 private:
  // A page that goes takes the view's address along, which is there again as soon as another loads.
  LaterPage& page() const {
    if (page_->isGone() && ask("URL", [&] { return [as<NSObject>() URL]; })) page_->comeBack();
    return *page_;
  }

  const std::shared_ptr<LaterPage> page_ = std::make_shared<LaterPage>();
};

}  // namespace

std::shared_ptr<View> makeWKWebView(::UIView* view) { return makeNamed<WKWebView>(view); }

}  // namespace tarni::ios
