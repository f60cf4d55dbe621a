// Alerts: remembers which alerts were shown. They appear in no window. Main thread.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "backends/headless/History.h"

#include "platform/UIKit/UIApplication.h"

namespace tarni::headless {

class Alert : public platform::UIAlertView {
 public:
  Alert(std::string message, std::optional<std::string> cancelButtonTitle,
        std::optional<std::string> otherButtonTitle)
      : message(std::move(message)),
        cancelButtonTitle(std::move(cancelButtonTitle)),
        otherButtonTitle(std::move(otherButtonTitle)) {}

  void dismissWithClickedButtonIndex(long index, bool /*animated*/) override { clicked = index; }
  bool isVisible() const { return !clicked; }

  const std::string message;
  const std::optional<std::string> cancelButtonTitle;
  const std::optional<std::string> otherButtonTitle;
  // The button with which it was dismissed; null while it is visible.
  std::optional<long> clicked;
};

class Alerts : public platform::UIAlerts {
 public:
  std::shared_ptr<platform::UIAlertView> show(
      std::string message, std::optional<std::string> cancelButtonTitle,
      std::optional<std::string> otherButtonTitle) override {
    return remember(shown_,
                    std::make_shared<Alert>(std::move(message), std::move(cancelButtonTitle),
                                            std::move(otherButtonTitle)));
  }

  // The latest last.
  const std::deque<std::shared_ptr<Alert>>& shown() const { return shown_; }

 private:
  std::deque<std::shared_ptr<Alert>> shown_;
};

}  // namespace tarni::headless
