#include "agent/interaction/PlayBackInteractionMethods.h"

#include "agent/core/state/MainThread.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "platform/ObjectiveC/Runtime.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni {
namespace {

using platform::Task;
using platform::UIViewRef;
namespace uikit = platform::uikit;

Task<void> toggle(UIViewRef view) {
  const auto control = platform::as<platform::UISwitch>(view);
  if (!control) throw platform::unrecognizedSelector(view->getClass(), "isOn");
  const bool wasOn = control->isOn();
  co_await control->setOn(!wasOn);
}

// The topmost view, which has no superview, is not looked at.
UIViewRef enclosingSwitch(const UIViewRef& view) {
  UIViewRef current = view;
  while (const UIViewRef superview = current->superview()) {
    if (current->isKindOfClass(uikit::UISwitch)) return current;
    current = superview;
  }
  return nullptr;
}

}  // namespace

Task<bool> PlayBackInteractionMethods::performClickOnUIView(UIViewRef view) {
  assertMainThread();
  const bool isSwitch = view->isKindOfClass(uikit::UISwitch);
  const bool isSwitchByName = view->getClass()->lowercaseName().find("switch") != std::string::npos;
  const UIViewRef toToggle = isSwitch || isSwitchByName ? view : enclosingSwitch(view);
  if (toToggle) {
    co_await toggle(toToggle);
  } else {
    co_await KIFAdditions::tap(view);
  }
  co_return true;
}

Task<bool> PlayBackInteractionMethods::performTypeTextOnUIView(UIViewRef view, std::string text) {
  assertMainThread();
  const auto field = platform::as<platform::UITextField>(view);
  if (!field || !view->isKindOfClass(uikit::UITextField)) co_return false;
  co_await view->becomeFirstResponder();
  co_await field->setText(std::move(text));
  // The application listens to either.
  co_await platform::current().notificationCenter->postNotificationName(
      "UITextFieldTextDidChangeNotification", view);
  if (const auto control = platform::as<platform::UIControl>(view)) {
    co_await control->sendActionsForControlEvents(platform::UIControlEventEditingChanged);
  }
  co_return true;
}

}  // namespace tarni
