#include "backends/qt/input/QtEventDispatch.h"

#include <utility>

#include "platform/Foundation/Guarded.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::qt {

using platform::Argument;

QtEventDispatch::QtEventDispatch(platform::ObjectiveCRuntime& runtime) : runtime_(runtime) {
  using namespace platform;
  runtime_.class_addMethod(
      uikit::UIApplication, "sendEvent:",
      [this](const std::vector<Argument>& arguments) { sendEventImplementation(arguments); },
      "v@:@");
  const auto nothing = [](const std::vector<Argument>&) {};
  runtime_.class_addMethod(uikit::UIViewController, "viewWillAppear:", nothing, "v@:B");
  runtime_.class_addMethod(uikit::UIViewController, "viewDidAppear:", nothing, "v@:B");
}

void QtEventDispatch::sendEvent(platform::UIEvent& event, const std::function<void()>& deliver) {
  Delivery delivery{&event, &deliver, current_};
  current_ = &delivery;
  performGuarded(platform::uikit::UIApplication, "sendEvent:", &event);
  current_ = delivery.outer;
  QtEventDispatch::deliver(delivery);
  if (delivery.failure) std::rethrow_exception(delivery.failure);
}

void QtEventDispatch::sendEventImplementation(const std::vector<Argument>& arguments) {
  const auto* const event =
      arguments.empty() ? nullptr : std::get_if<platform::UIEvent*>(&arguments.front());
  if (event && current_ && current_->event == *event) deliver(*current_);
}

// What the program throws goes round the hooks, which would keep it.
void QtEventDispatch::deliver(Delivery& delivery) noexcept {
  if (std::exchange(delivery.isDelivered, true)) return;
  try {
    (*delivery.deliver)();
  } catch (...) {
    delivery.failure = std::current_exception();
  }
}

// A hook that fails keeps nothing from the program.
void QtEventDispatch::performGuarded(platform::Class cls, const char* selector, Argument argument) {
  platform::runGuarded(selector, [&] { runtime_.perform(cls, selector, {std::move(argument)}); });
}

}  // namespace tarni::qt
