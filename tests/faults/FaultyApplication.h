// FaultyApplication: an application that does something of its own each time it is let run, and
// whose windows may be gone. Everything else is the real one's. Main thread.
#pragma once

#include <functional>
#include <utility>

#include "platform/UIKit/UIApplication.h"

namespace tarni::test {

class FaultyApplication : public platform::UIApplication {
 public:
  // `runs` is called before and after each run.
  FaultyApplication(platform::UIApplication& real, std::function<void()> runs)
      : real_(real), runs_(std::move(runs)) {}

  platform::UIWindowRef keyWindow() const override { return real_.keyWindow(); }
  std::vector<platform::UIWindowRef> windowsWithKeyWindow() const override {
    return real_.windowsWithKeyWindow();
  }
  std::vector<platform::UIWindowRef> windowsThatTakeInput() const override {
    return real_.windowsThatTakeInput();
  }
  platform::Task<void> makeKeyWindow(platform::UIWindowRef window) override {
    return real_.makeKeyWindow(std::move(window));
  }
  void setRunLoopObserver(platform::RunLoopObserver* observer) override {
    real_.setRunLoopObserver(observer);
  }
  platform::UITouchRef makeTouch() override { return real_.makeTouch(); }
  platform::UIEvent& _touchesEvent() override { return real_._touchesEvent(); }
  platform::Task<void> sendEvent(platform::UIEvent& event) override {
    runs_();
    co_await real_.sendEvent(event);
    runs_();
  }
  platform::Task<platform::CFRunLoopRunResult> runLoopRunInMode(
      std::string mode, double seconds, bool returnAfterSourceHandled) override {
    runs_();
    const auto result =
        co_await real_.runLoopRunInMode(std::move(mode), seconds, returnAfterSourceHandled);
    runs_();
    co_return result;
  }
  bool openURL(std::string_view url) override { return real_.openURL(url); }

 private:
  platform::UIApplication& real_;
  const std::function<void()> runs_;
};

}  // namespace tarni::test
