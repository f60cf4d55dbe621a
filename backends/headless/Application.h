// Application: the UIApplication. Main thread.
//
// Tasks end without having been suspended: an event is dispatched on the caller's stack. The one
// exception are touches on a control that opens a nested loop (Control::setOpensNestedLoop): they
// are dispatched from the run loop, and the task ends when the application has handled them or runs
// a loop inside.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "backends/headless/ChangeLog.h"
#include "backends/headless/RunLoop.h"
#include "backends/headless/events/EventLog.h"
#include "backends/headless/events/SubviewIndex.h"
#include "backends/headless/events/TouchDispatcher.h"
#include "backends/headless/views/Window.h"
#include "backends/posix/EventRecord.h"
#include "platform/ObjectiveC/Runtime.h"
#include "platform/UIKit/UIApplication.h"

namespace tarni::headless {

using WindowRef = std::shared_ptr<Window>;

// One call of runLoopRunInMode.
struct RunLoopRun {
  std::string mode;
  double seconds = 0;
  bool returnAfterSourceHandled = false;
};

class Application : public platform::UIApplication {
 public:
  // Defines the methods of the class UIApplication in the runtime: "sendEvent:" and those of the
  // run-loop mode stack.
  Application(platform::ObjectiveCRuntime& runtime, RunLoop& runLoop);

  // --- windows
  platform::UIWindowRef keyWindow() const override { return keyWindow_; }
  std::vector<platform::UIWindowRef> windowsWithKeyWindow() const override;
  std::vector<platform::UIWindowRef> windowsThatTakeInput() const override;
  platform::Task<void> makeKeyWindow(platform::UIWindowRef window) override;
  // Shows a window in front of the others.
  void addWindow(const WindowRef& window);
  void removeWindow(const WindowRef& window);
  // Null leaves the application without one.
  void setKeyWindow(const WindowRef& window);
  // Back to front.
  const std::vector<WindowRef>& windows() const { return windows_; }

  std::shared_ptr<void> holdStill() override { return SubviewIndex::hold(); }
  platform::ViewChanges takeViewChanges() override { return ChangeLog::sharedInstance().take(); }

  // --- events
  platform::UITouchRef makeTouch() override;
  posix::EventRecord& _touchesEvent() override { return touchesEvent_; }
  platform::Task<void> sendEvent(platform::UIEvent& event) override;
  // The same without the method "sendEvent:", for devices of the agent's.
  platform::Task<void> handleUnseen(platform::UIEvent& event);
  // Calls the method "sendEvent:" on the spot, as the platform does for a finger.
  void performSendEvent(platform::UIEvent& event);
  EventLog& eventLog() { return eventLog_; }

  // Always says that it was opened.
  bool openURL(std::string_view url) override;
  // The addresses that were opened, the latest last.
  const std::deque<std::string>& openedURLs() const { return openedURLs_; }

  // --- run loop
  platform::Task<platform::CFRunLoopRunResult> runLoopRunInMode(
      std::string mode, double seconds, bool returnAfterSourceHandled) override;
  void setRunLoopObserver(platform::RunLoopObserver* observer) override;
  std::optional<std::uint64_t> workCount() override { return runLoop_.workCount(); }
  bool setInputObserver(platform::InputObserver* observer) override;
  bool setPaintObserver(platform::PaintObserver* observer) override;
  // A person's hand says what it is about to do.
  void showInput(const platform::InputEvent& event) const;
  // The calls of runLoopRunInMode, the latest last.
  const std::deque<RunLoopRun>& runLoopRuns() const { return runLoopRuns_; }
  // The application's own mode changes, through the methods "pushRunLoopMode:" and
  // "popRunLoopMode:".
  void pushRunLoopMode(const std::string& mode);
  void popRunLoopMode(const std::string& mode);
  const std::vector<std::string>& runLoopModes() const { return runLoopModes_; }

 private:
  struct Delivery;
  struct DeliveryAwaiter;

  void defineMethods();
  platform::Task<void> deliver(platform::UIEvent& event, std::function<void()> handle);
  void dispatch(platform::UIEvent& event);
  void makeTouchedWindowKey(const platform::UIEvent& event);
  void endDelivery();

  platform::ObjectiveCRuntime& runtime_;
  RunLoop& runLoop_;
  WindowRef keyWindow_;
  std::vector<WindowRef> windows_;
  posix::EventRecord touchesEvent_;
  TouchDispatcher dispatcher_;
  EventLog eventLog_;
  platform::InputObserver* inputObserver_ = nullptr;
  std::shared_ptr<Delivery> delivery_;  // the one that a sender waits for
  std::deque<RunLoopRun> runLoopRuns_;
  std::deque<std::string> openedURLs_;
  std::vector<std::string> runLoopModes_{platform::kCFRunLoopDefaultMode};
};

}  // namespace tarni::headless
