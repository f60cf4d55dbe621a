// QtApplication: the program as a UIApplication. GUI thread.
#pragma once

#include <QtCore/QPointer>
#include <QtGui/QWindow>

#include "backends/qt/input/QtEventDispatch.h"
#include "backends/qt/input/QtFingers.h"
#include "backends/qt/input/QtTouchesEvent.h"
#include "platform/UIKit/UIApplication.h"

namespace tarni::qt {

class QtApplication : public platform::UIApplication {
 public:
  // `dispatch` must outlive the application, which lives as long as the process.
  explicit QtApplication(QtEventDispatch& dispatch) : dispatch_(dispatch) {}

  // The popup or modal dialog that keeps the user from everything else, otherwise the window that
  // the agent turned to until another is activated, the active window, the one that was opened
  // last.
  platform::UIWindowRef keyWindow() const override;
  // In the order in which they were opened.
  std::vector<platform::UIWindowRef> windowsWithKeyWindow() const override;

  // Those behind the key window in the order in which they were opened, the last first.
  std::vector<platform::UIWindowRef> windowsThatTakeInput() const override;
  // Closes open menus, unless the window is one, and lets the window system activate the window.
  platform::Task<void> makeKeyWindow(platform::UIWindowRef window) override;

  std::shared_ptr<void> holdStill() override;

  platform::UITouchRef makeTouch() override;
  QtTouchesEvent& _touchesEvent() override { return touchesEvent_; }
  platform::Task<void> sendEvent(platform::UIEvent& event) override;
  platform::Task<platform::CFRunLoopRunResult> runLoopRunInMode(
      std::string mode, double seconds, bool returnAfterSourceHandled) override;
  void setRunLoopObserver(platform::RunLoopObserver* observer) override;
  std::optional<std::uint64_t> workCount() override;
  std::string currentWork() const override;
  bool setInputObserver(platform::InputObserver* observer) override;
  bool setPaintObserver(platform::PaintObserver* observer) override;
  bool openURL(std::string_view url) override;

 private:
  platform::UIWindowRef chosenWindow() const;

  QtEventDispatch& dispatch_;
  QtTouchesEvent touchesEvent_;
  QtFingers fingers_;
  QPointer<QWindow> chosen_;              // by makeKeyWindow
  const QWindow* focusedThen_ = nullptr;  // compared only
};

}  // namespace tarni::qt
