#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"

#include "agent/interaction/Swizzle.h"
#include "agent/recording/RecorderEvent.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::KIFAdditions {
namespace {

constexpr const char* kMtSendEventSelector = "mtSendEvent:";

void showToRecorder(const std::vector<platform::Argument>& arguments) {
  const auto* event =
      arguments.empty() ? nullptr : std::get_if<platform::UIEvent*>(&arguments.front());
  if (event && *event) RecorderEvent().handleEvent(**event);
}

}  // namespace

void loadUIApplication(platform::Class receiver) {
  if (receiver != platform::uikit::UIApplication) return;
  platform::NSLog("Loading TARNI IOS INSTRUMENTOR...");
  platform::current().runtime->class_addMethod(receiver, kMtSendEventSelector, mtSendEvent, "v@:@");
  Swizzle(receiver, "sendEvent:", kMtSendEventSelector);
}

void mtSendEvent(const std::vector<platform::Argument>& arguments) noexcept {
  platform::NSLog("Clicked");
  try {
    showToRecorder(arguments);
  } catch (...) {
    platform::logFailure("Recording an event failed");
  }
  try {
    // After the exchange this is the application's own method.
    platform::current().runtime->perform(platform::uikit::UIApplication, kMtSendEventSelector,
                                         arguments);
  } catch (...) {
    platform::logFailure("Dispatching an event failed");
  }
}

}  // namespace tarni::KIFAdditions
