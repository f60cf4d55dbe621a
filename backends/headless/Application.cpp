#include "backends/headless/Application.h"

#include <algorithm>
#include <coroutine>
#include <exception>

#include "backends/headless/History.h"
#include "backends/headless/views/Control.h"
#include "backends/headless/views/ViewController.h"
#include "backends/posix/TouchRecord.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::headless {

using platform::Argument;
namespace uikit = platform::uikit;

namespace {

constexpr const char* kSendEventSelector = "sendEvent:";

bool hitsControlWithNestedLoop(const platform::UIEvent& event) {
  for (const platform::UITouchRef& touch : event.allTouches()) {
    const auto touched = std::dynamic_pointer_cast<View>(touch->view());
    for (View* view = touched.get(); view; view = view->parent()) {
      const auto* control = dynamic_cast<const Control*>(view);
      if (control && control->opensNestedLoop()) return true;
    }
  }
  return false;
}

}  // namespace

// An event on its way to the application from the run loop.
struct Application::Delivery {
  std::coroutine_handle<> sender;  // empty once it goes on
  std::exception_ptr failure;
};

struct Application::DeliveryAwaiter {
  Application& application;
  std::function<void()> handle;
  std::shared_ptr<Delivery> delivery = std::make_shared<Delivery>();

  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> sender) {
    delivery->sender = sender;
    application.delivery_ = delivery;
    application.runLoop_.post([&application = application, handle = handle, delivery = delivery] {
      try {
        handle();
      } catch (...) {
        // Nobody is left to hear of it once the sender has gone on.
        if (!delivery->sender) throw;
        delivery->failure = std::current_exception();
      }
      if (delivery->sender) application.endDelivery();
    });
  }
  void await_resume() const {
    if (delivery->failure) std::rethrow_exception(delivery->failure);
  }
};

Application::Application(platform::ObjectiveCRuntime& runtime, RunLoop& runLoop)
    : runtime_(runtime), runLoop_(runLoop) {
  defineMethods();
  // The sender goes on from the nested loop, not from the call that starts it.
  runLoop_.onNestedLoop([this] {
    if (delivery_) runLoop_.post([this] { endDelivery(); });
  });
}

void Application::defineMethods() {
  runtime_.class_replaceMethod(
      uikit::UIApplication, kSendEventSelector,
      [this](const std::vector<Argument>& arguments) {
        dispatch(*std::get<platform::UIEvent*>(arguments.at(0)));
      },
      "v@:@");
  const auto push = [this](const std::vector<Argument>& arguments) {
    runLoopModes_.push_back(std::get<std::string>(arguments.at(0)));
  };
  const auto pop = [this](const std::vector<Argument>&) {
    if (runLoopModes_.size() > 1) runLoopModes_.pop_back();
  };
  runtime_.class_replaceMethod(uikit::UIApplication, "pushRunLoopMode:", push, "v@:@");
  runtime_.class_replaceMethod(uikit::UIApplication, "pushRunLoopMode:requester:", push, "v@:@@");
  runtime_.class_replaceMethod(uikit::UIApplication, "popRunLoopMode:", pop, "v@:@");
  runtime_.class_replaceMethod(uikit::UIApplication, "popRunLoopMode:requester:", pop, "v@:@@");
  ViewController::defineMethods(runtime_);
}

// --- windows

std::vector<platform::UIWindowRef> Application::windowsWithKeyWindow() const {
  std::vector<platform::UIWindowRef> shown;
  if (keyWindow_) shown.push_back(keyWindow_);
  for (const WindowRef& window : windows_) {
    if (window != keyWindow_ && !window->isHidden()) shown.push_back(window);
  }
  return shown;
}

std::vector<platform::UIWindowRef> Application::windowsThatTakeInput() const {
  std::vector<platform::UIWindowRef> shown;
  for (const WindowRef& window : windows_) {
    if (!window->isHidden()) shown.push_back(window);
  }
  return platform::windowsInReach(shown, keyWindow_);
}

platform::Task<void> Application::makeKeyWindow(platform::UIWindowRef window) {
  if (auto own = std::dynamic_pointer_cast<Window>(window)) own->makeKeyAndVisible(*this);
  co_return;
}

void Application::addWindow(const WindowRef& window) {
  ChangeLog::sharedInstance().noteStructure();
  std::erase(windows_, window);
  windows_.push_back(window);
}

void Application::removeWindow(const WindowRef& window) {
  ChangeLog::sharedInstance().noteStructure();
  std::erase(windows_, window);
  if (keyWindow_ == window) keyWindow_ = windows_.empty() ? nullptr : windows_.back();
}

void Application::setKeyWindow(const WindowRef& window) {
  if (window && std::ranges::find(windows_, window) == windows_.end()) addWindow(window);
  ChangeLog::sharedInstance().noteStructure();
  keyWindow_ = window;
}

// --- events

platform::UITouchRef Application::makeTouch() {
  return std::make_shared<posix::TouchRecord>();
}

platform::Task<void> Application::sendEvent(platform::UIEvent& event) {
  return deliver(event, [this, &event] { performSendEvent(event); });
}

platform::Task<void> Application::handleUnseen(platform::UIEvent& event) {
  return deliver(event, [this, &event] { dispatch(event); });
}

platform::Task<void> Application::deliver(platform::UIEvent& event, std::function<void()> handle) {
  if (hitsControlWithNestedLoop(event)) {
    DeliveryAwaiter delivery{*this, std::move(handle)};
    co_await delivery;
  } else {
    handle();
  }
}

void Application::performSendEvent(platform::UIEvent& event) {
  runtime_.perform(uikit::UIApplication, kSendEventSelector, {&event});
}

void Application::dispatch(platform::UIEvent& event) {
  eventLog_.add(event);
  makeTouchedWindowKey(event);
  dispatcher_.dispatch(event);
}

void Application::makeTouchedWindowKey(const platform::UIEvent& event) {
  for (const platform::UITouchRef& touch : event.allTouches()) {
    const auto window = std::dynamic_pointer_cast<Window>(touch->window());
    const bool isOther = window && window != keyWindow_ && touch->view();
    if (isOther && touch->phase() == platform::UITouchPhase::Began) setKeyWindow(window);
  }
}

void Application::endDelivery() {
  const std::shared_ptr<Delivery> delivery = std::exchange(delivery_, nullptr);
  if (delivery && delivery->sender) std::exchange(delivery->sender, nullptr).resume();
}

bool Application::openURL(std::string_view url) {
  remember(openedURLs_, std::string(url));
  return true;
}

// --- run loop

platform::Task<platform::CFRunLoopRunResult> Application::runLoopRunInMode(
    std::string mode, double seconds, bool returnAfterSourceHandled) {
  remember(runLoopRuns_, RunLoopRun{std::move(mode), seconds, returnAfterSourceHandled});
  runLoop_.wait(seconds);
  co_return platform::CFRunLoopRunResult::TimedOut;
}

void Application::setRunLoopObserver(platform::RunLoopObserver* observer) {
  runLoop_.setObserver(observer);
}

bool Application::setInputObserver(platform::InputObserver* observer) {
  inputObserver_ = observer;
  return true;
}

bool Application::setPaintObserver(platform::PaintObserver* observer) {
  ChangeLog::sharedInstance().setObserver(observer);
  return true;
}

void Application::showInput(const platform::InputEvent& event) const {
  if (inputObserver_) inputObserver_->willHandle(event);
}

void Application::pushRunLoopMode(const std::string& mode) {
  runtime_.perform(uikit::UIApplication, "pushRunLoopMode:", {mode});
}

void Application::popRunLoopMode(const std::string& mode) {
  runtime_.perform(uikit::UIApplication, "popRunLoopMode:", {mode});
}

}  // namespace tarni::headless
