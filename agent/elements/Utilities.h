// Utilities, the properties of views, for steps, searches and answers. Main thread. What is nil in
// the view is the empty text.
//
// What else bears the name stands where it belongs: JSON (core/state/Utilities_Json.h), text,
// messages, pictures (Utilities_Images.h) and parsed commands (commands/FunctionCallObject.h).
#pragma once

#include <string>

#include "agent/elements/ElementProperties.h"
#include "agent/elements/MappedActionObject.h"
#include "platform/UIKit/UIView.h"

namespace tarni::Utilities {

std::string getUIViewClassName(const platform::UIViewRef& view);
std::string getUIViewAccesibilityId(const platform::UIViewRef& view);
// Kept for callers from outside, as are the tag, the position and the properties in one.
std::string getUIViewAccesibilityLanguage(const platform::UIViewRef& view);
// The accessibility value, else the label, else the hint.
std::string getUIViewAccesibilityLabel(const platform::UIViewRef& view);
long getUIViewTag(const platform::UIViewRef& view);
// The text under which a view is recorded: a field's placeholder, not what was typed.
std::string getUIViewText(const platform::UIViewRef& view);
// The text that the view shows now.
std::string getUIViewTextForPlayBack(const platform::UIViewRef& view);
// Always empty, and kept so: XPath positions are XpathManager's.
std::string getUIViewXpath(const platform::UIViewRef& view);
ElementProperties createElementProperties(const platform::UIViewRef& view);
// The on state of a switch, or of a view that is called one. Throws NSException when the view has
// no such state.
bool isOn(const platform::UIViewRef& view);
// The action under which a touch on the view is recorded.
MappedActionObject getActionAndDataAccordingToComponent(const platform::UIViewRef& view);
// The same without a word to the log, for a touch that the application has yet to handle.
MappedActionObject mappedAction(const platform::UIViewRef& view);

}  // namespace tarni::Utilities
