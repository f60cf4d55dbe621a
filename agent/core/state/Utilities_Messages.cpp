#include "agent/core/state/Utilities_Messages.h"

#include <optional>
#include <utility>

#include "platform/Platform.h"

namespace tarni::Utilities {
namespace {

constexpr double kToastSeconds = 5.0;

}  // namespace

void ShowToastMessage(std::string text) {
  platform::current().dispatch->mainQueue().async([text = std::move(text)] {
    const platform::Platform& platform = platform::current();
    const auto alert = platform.alerts->show(text, std::nullopt, std::nullopt);
    platform.dispatch->afterOnMain(kToastSeconds, [alert] { dismissAlert(alert); });
  });
}

void ShowAlertMessage(std::string text) {
  platform::current().dispatch->mainQueue().async([text = std::move(text)] {
    dismissAlert(platform::current().alerts->show(text, "Cancel", "Ok"));
  });
}

void dismissAlert(const std::shared_ptr<platform::UIAlertView>& alert) {
  if (alert) alert->dismissWithClickedButtonIndex(0, true);
}

}  // namespace tarni::Utilities
