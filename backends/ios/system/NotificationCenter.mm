#include "backends/ios/system/NotificationCenter.h"

#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/View.h"

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
