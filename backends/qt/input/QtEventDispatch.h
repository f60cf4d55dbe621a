// QtEventDispatch: the methods that can be hooked. Every event goes through "sendEvent:" of the
// class UIApplication, whose own implementation lets the program have it; a window that appears
// goes through "viewWillAppear:" and "viewDidAppear:" of the class UIViewController. GUI thread.
#pragma once

#include <exception>
#include <functional>
#include <vector>

#include "platform/ObjectiveC/Runtime.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {

class QtEventDispatch {
 public:
  // Defines the methods.
  explicit QtEventDispatch(platform::ObjectiveCRuntime& runtime);

  // Performs "sendEvent:"; its own implementation calls `deliver`. Whatever hooks it, `deliver` is
  // called exactly once. May enter a nested loop of the program. Throws what `deliver` throws: that
  // is the program's own.
  void sendEvent(platform::UIEvent& event, const std::function<void()>& deliver);
  // Performs the method of a window, dialog or page that is about to be shown, and of one that is.
  void viewWillAppear() {
    performGuarded(platform::uikit::UIViewController, "viewWillAppear:", false);
  }
  void viewDidAppear() {
    performGuarded(platform::uikit::UIViewController, "viewDidAppear:", false);
  }

 private:
  // An event that is on its way; the program's nested loops stack them up.
  struct Delivery {
    platform::UIEvent* event;
    const std::function<void()>* deliver;
    Delivery* outer;
    bool isDelivered = false;
    std::exception_ptr failure = nullptr;
  };

  void sendEventImplementation(const std::vector<platform::Argument>& arguments);
  void performGuarded(platform::Class cls, const char* selector, platform::Argument argument);
  static void deliver(Delivery& delivery) noexcept;

  platform::ObjectiveCRuntime& runtime_;
  Delivery* current_ = nullptr;
};

}  // namespace tarni::qt
