#include "backends/ios/NotificationCenter.h"

#include "backends/ios/Completed.h"
#include "backends/ios/Guard.h"
#include "backends/ios/Owned.h"
#include "backends/ios/Values.h"
#include "backends/ios/View.h"

namespace tarni::ios {

platform::Task<void> NotificationCenter::postNotificationName(
    std::string_view name, std::shared_ptr<platform::UIView> object) {
  const auto sender = std::dynamic_pointer_cast<View>(object);
  return completed([name = std::string(name), sender = Owned(sender ? sender->native() : nil)] {
    guarded([&] {
      [[::NSNotificationCenter defaultCenter] postNotificationName:toNSString(name)
                                                            object:sender.get()];
    });
  });
}

}  // namespace tarni::ios
