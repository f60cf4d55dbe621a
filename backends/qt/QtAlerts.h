// QtAlerts: the agent's own messages, shown at the lower edge of the window that the user faces.
//
// An alert is a tool-tip window that takes neither the focus nor the mouse, has no view and does
// not keep the program alive. Its buttons are named but cannot be pressed. GUI thread.
#pragma once

#include "platform/UIKit/UIApplication.h"

namespace tarni::qt {

class QtAlerts : public platform::UIAlerts {
 public:
  std::shared_ptr<platform::UIAlertView> show(std::string message,
                                              std::optional<std::string> cancelButtonTitle,
                                              std::optional<std::string> otherButtonTitle) override;
};

}  // namespace tarni::qt
