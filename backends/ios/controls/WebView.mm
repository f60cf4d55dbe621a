#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

class WebView : public View, public platform::UIWebView {
 public:
  using View::View;

  bool isLoading() const override {
    return ask("isLoading", [&]() -> bool { return [as<NSObject>() isLoading]; });
  }

  // The page is evaluated while the caller waits.
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override {
    return completed([view = Owned(as<NSObject>()), script = std::move(script)] {
      return toTextOrEmpty(guarded(
          [&] { return [view.get() stringByEvaluatingJavaScriptFromString:toNSString(script)]; }));
    });
  }
};

}  // namespace

std::shared_ptr<View> makeWebView(::UIView* view) { return makeNamed<WebView>(view); }

}  // namespace tarni::ios
