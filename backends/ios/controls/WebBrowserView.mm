#include "backends/ios/Completed.h"
#include "backends/ios/Kinds.h"
#include "backends/ios/Owned.h"
#include "backends/ios/PrivateCall.h"
#include "backends/ios/Values.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

class WebBrowserView : public View, public platform::UIWebBrowserView {
 public:
  using View::View;

  platform::Task<void> tapInteractionWithLocation(platform::CGPoint point) override {
    return completed([view = Owned(as<NSObject>()), point] {
      privately(view.get(), @selector(tapInteractionWithLocation:), "web views take no taps",
                [&] { [view.get() tapInteractionWithLocation:fromPoint(point)]; });
    });
  }
};

}  // namespace

std::shared_ptr<View> makeWebBrowserView(::UIView* view) {
  return std::make_shared<WebBrowserView>(view);
}

}  // namespace tarni::ios
