// Application: the shared UIApplication, asked for anew each time, because the agent may be loaded
// before the application object is made. Main thread.
#pragma once

#include <optional>

#include "backends/ios/touch/Event.h"
#include "platform/UIKit/UIApplication.h"

namespace tarni::ios {

class Application : public platform::UIApplication {
 public:
  platform::UIWindowRef keyWindow() const override;
  std::vector<platform::UIWindowRef> windowsWithKeyWindow() const override;
  std::vector<platform::UIWindowRef> windowsThatTakeInput() const override;
  platform::Task<void> makeKeyWindow(platform::UIWindowRef window) override;
  platform::UITouchRef makeTouch() override;
  platform::UIEvent& _touchesEvent() override;
  platform::Task<void> sendEvent(platform::UIEvent& event) override;
  platform::Task<platform::CFRunLoopRunResult> runLoopRunInMode(
      std::string mode, double seconds, bool returnAfterSourceHandled) override;
  void setRunLoopObserver(platform::RunLoopObserver* observer) override;
  // True when the system has a program for the address; it is opened later.
  bool openURL(std::string_view url) override;
  // Before the application object is made, the process keeps it.
  std::any& associatedObject(const void* key) override;

 private:
  std::optional<Event> touchesEvent_;
};

}  // namespace tarni::ios
