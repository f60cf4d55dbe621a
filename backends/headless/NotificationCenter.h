// NotificationCenter: the application's observers, and what was posted. Main thread.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation/Foundation.h"
#include "platform/UIKit/UIView.h"

namespace tarni::headless {

struct PostedNotification {
  std::string name;
  platform::UIViewWeakRef object;
};

class NotificationCenter : public platform::NSNotificationCenter {
 public:
  using Observer = std::function<void(const platform::UIViewRef& object)>;

  void addObserver(std::string name, Observer observer);
  void post(std::string_view name, const platform::UIViewRef& object);
  platform::Task<void> postNotificationName(std::string_view name,
                                            std::shared_ptr<platform::UIView> object) override;
  // The latest last.
  const std::deque<PostedNotification>& posted() const { return posted_; }

 private:
  std::vector<std::pair<std::string, Observer>> observers_;
  std::deque<PostedNotification> posted_;
};

}  // namespace tarni::headless
