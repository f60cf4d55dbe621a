#include "agent/session/methods/OwnText.h"

#include "agent/recording/RecorderAction.h"
#include "agent/session/screen/Survey.h"
#include "platform/Foundation/Guarded.h"
#include "platform/UIKit/Classes.h"

namespace tarni::session {

namespace uikit = platform::uikit;
using platform::UIViewRef;

namespace {

bool takesText(const UIViewRef& view) {
  return view->isKindOfClass(uikit::UITextField) || view->isKindOfClass(uikit::UITextView);
}

// Null where the keyboard is with no field. A control has it together with the field in it.
UIViewRef focusedField() {
  UIViewRef focused;
  for (const platform::UIWindowRef& window : shownWindows()) {
    surveyWindow(window, [&focused](const Seen& seen) {
      if (takesText(seen.view) && seen.view->isFirstResponder()) focused = seen.view;
      return !focused;
    });
    if (focused) break;
  }
  return focused;
}

}  // namespace

OwnText::~OwnText() {
  platform::runGuarded("session channel", [this] { leaveOut(); });
}

void OwnText::willWrite() {
  leaveOut();
  UIViewRef field = field_.lock();
  if (!field || !field->isFirstResponder()) field = focusedField();
  field_ = field;
  before_ = field ? RecorderAction::typedText(field) : "";
}

void OwnText::leaveOut() {
  const UIViewRef field = field_.lock();
  if (field && RecorderAction::typedText(field) != before_) RecorderAction::leaveOutTextOf(field);
}

}  // namespace tarni::session
