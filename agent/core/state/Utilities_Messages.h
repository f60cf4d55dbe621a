// Utilities, the messages to the person at the device. Any thread, unless said otherwise; they are
// shown later on the main thread.
#pragma once

#include <memory>
#include <string>

#include "platform/UIKit/UIApplication.h"

namespace tarni::Utilities {

// Shows the text for 5.0 s.
void ShowToastMessage(std::string text);

// Flashes the text in an alert with the buttons "Cancel" and "Ok", dismissed at once: nobody gets
// to press one. Kept: an error is seen and holds nothing up.
void ShowAlertMessage(std::string text);

// Dismisses the alert as if its first button had been pressed. Main thread.
void dismissAlert(const std::shared_ptr<platform::UIAlertView>& alert);

}  // namespace tarni::Utilities
