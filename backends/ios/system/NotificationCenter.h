// NotificationCenter: the default NSNotificationCenter. Main thread.
#pragma once

#include "platform/Foundation/Foundation.h"

namespace tarni::ios {

class NotificationCenter : public platform::NSNotificationCenter {
 public:
  platform::Task<void> postNotificationName(std::string_view name,
                                            std::shared_ptr<platform::UIView> object) override;
};

}  // namespace tarni::ios
