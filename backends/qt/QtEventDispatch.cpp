#include "backends/qt/QtEventDispatch.h"

#include "backends/posix/Guarded.h"
#include "platform/UIKit/Classes.h"
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
  Delivery delivery{&event, &deliver, current_, false};
  current_ = &delivery;
  performGuarded(platform::uikit::UIApplication, "sendEvent:", &event);
  current_ = delivery.outer;
  QtEventDispatch::deliver(delivery);
}

void QtEventDispatch::windowAppears(const std::function<void()>& appear) {
  performGuarded(platform::uikit::UIViewController, "viewWillAppear:", false);
  appear();
  performGuarded(platform::uikit::UIViewController, "viewDidAppear:", false);
}

void QtEventDispatch::sendEventImplementation(const std::vector<Argument>& arguments) {
  const auto* const event =
      arguments.empty() ? nullptr : std::get_if<platform::UIEvent*>(&arguments.front());
  if (event && current_ && current_->event == *event) deliver(*current_);
}

void QtEventDispatch::deliver(Delivery& delivery) {
  if (!std::exchange(delivery.isDelivered, true)) (*delivery.deliver)();
}

// A hook that fails keeps nothing from the program.
void QtEventDispatch::performGuarded(platform::Class cls, const char* selector, Argument argument) {
  posix::runGuarded(selector, [&] { runtime_.perform(cls, selector, {std::move(argument)}); });
}

}  // namespace tarni::qt
