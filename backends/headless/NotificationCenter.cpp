#include "backends/headless/NotificationCenter.h"

#include "backends/headless/History.h"

namespace tarni::headless {

void NotificationCenter::addObserver(std::string name, Observer observer) {
  observers_.emplace_back(std::move(name), std::move(observer));
}

void NotificationCenter::post(std::string_view name, const platform::UIViewRef& object) {
  remember(posted_, PostedNotification{std::string(name), object});
  const auto observers = observers_;  // an observer may add others
  for (const auto& [observed, observer] : observers) {
    if (observed == name) observer(object);
  }
}

platform::Task<void> NotificationCenter::postNotificationName(
    std::string_view name, std::shared_ptr<platform::UIView> object) {
  post(name, object);
  co_return;
}

}  // namespace tarni::headless
