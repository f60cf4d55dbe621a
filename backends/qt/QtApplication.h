// QtApplication: the program as a UIApplication. GUI thread.
#pragma once

#include "backends/qt/QtEventDispatch.h"
#include "backends/qt/QtFingers.h"
#include "backends/qt/QtTouchesEvent.h"
#include "platform/UIKit/UIApplication.h"

namespace tarni::qt {

class QtApplication : public platform::UIApplication {
 public:
  // Both must outlive the application, which lives as long as the process.
  explicit QtApplication(QtEventDispatch& dispatch) : dispatch_(dispatch) {}

  // The popup or modal dialog that keeps the user from everything else, otherwise the active
  // window, otherwise the one that was opened last.
  platform::UIWindowRef keyWindow() const override;
  // In the order in which they were opened.
  std::vector<platform::UIWindowRef> windowsWithKeyWindow() const override;

  platform::UITouchRef makeTouch() override;
  QtTouchesEvent& _touchesEvent() override { return touchesEvent_; }
  platform::Task<void> sendEvent(platform::UIEvent& event) override;
  platform::Task<platform::CFRunLoopRunResult> runLoopRunInMode(
      std::string mode, double seconds, bool returnAfterSourceHandled) override;
  bool openURL(std::string_view url) override;

 private:
  QtEventDispatch& dispatch_;
  QtTouchesEvent touchesEvent_;
  QtFingers fingers_;
};

}  // namespace tarni::qt
