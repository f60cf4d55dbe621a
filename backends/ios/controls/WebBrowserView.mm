#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/guard/PrivateCall.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

class WebBrowserView : public View, public platform::UIWebBrowserView {
 public:
  using View::View;

  platform::Task<void> tapInteractionWithLocation(platform::CGPoint point) override {
    return tapped([point](NSObject* view) { [view tapInteractionWithLocation:fromPoint(point)]; });
  }

  platform::Task<void> performTapInteractionWithLocation(platform::CGPoint boxed) override {
    return tapped([point = fromPoint(boxed)](NSObject* view) {
      [view performSelector:@selector(tapInteractionWithLocation:)
                 withObject:[NSValue valueWithBytes:&point objCType:@encode(::CGPoint)]];
    });
  }

 private:
  template <typename Send>
  platform::Task<void> tapped(Send send) {
    return completed([view = Owned(as<NSObject>()), send] {
      privately(view.get(), @selector(tapInteractionWithLocation:), "web views take no taps",
                [&] { send(view.get()); });
    });
  }
};

}  // namespace

std::shared_ptr<View> makeWebBrowserView(::UIView* view) { return makeNamed<WebBrowserView>(view); }

}  // namespace tarni::ios
