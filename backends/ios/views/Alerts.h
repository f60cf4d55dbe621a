// Alerts: UIAlertView, which stands in a window of its own. Main thread.
#pragma once

#include "platform/UIKit/UIApplication.h"

namespace tarni::ios {

class Alerts : public platform::UIAlerts {
 public:
  // Null, after a log line with the message, on a system that no longer has the class, and in an
  // application of scenes, where it raises.
  std::shared_ptr<platform::UIAlertView> show(std::string message,
                                              std::optional<std::string> cancelButtonTitle,
                                              std::optional<std::string> otherButtonTitle) override;
};

}  // namespace tarni::ios
