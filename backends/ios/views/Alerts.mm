#include "backends/ios/views/Alerts.h"

#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/guard/Report.h"
#include "backends/ios/runtime/Values.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::ios {
namespace {

constexpr const char* kInitSelector =
    "initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:";

class Alert : public platform::UIAlertView {
 public:
  explicit Alert(Owned<id> alert) : alert_(std::move(alert)) {}

  void dismissWithClickedButtonIndex(long index, bool animated) override {
    guarded([&] { [alert_.get() dismissWithClickedButtonIndex:index animated:animated]; });
  }

 private:
  Owned<id> alert_;
};

NSString* titleOrNil(const std::optional<std::string>& title) {
  return title ? toNSString(*title) : nil;
}

}  // namespace

std::shared_ptr<platform::UIAlertView> Alerts::show(std::string message,
                                                    std::optional<std::string> cancelButtonTitle,
                                                    std::optional<std::string> otherButtonTitle) {
  const ::Class cls = objc_lookUpClass("UIAlertView");
  if (!cls) {
    reportMissing("UIAlertView", "messages are not shown: " + message);
    return nullptr;
  }
  auto alert = Owned<id>::adopting(answered(cls, kInitSelector, [&]() -> id {
    return [[cls alloc] initWithTitle:nil
                              message:toNSString(message)
                             delegate:nil
                    cancelButtonTitle:titleOrNil(cancelButtonTitle)
                    otherButtonTitles:titleOrNil(otherButtonTitle), nil];
  }));
  const bool isShown = alert && answered(alert.get(), "show", [&] { [alert.get() show]; });
  if (!isShown) platform::NSLog("A message is not shown: %s", message.c_str());
  return isShown ? std::make_shared<Alert>(std::move(alert)) : nullptr;
}

}  // namespace tarni::ios
