// What the channel tells of a view: the same in a tree, in a search and alone. Main thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "agent/session/protocol/JsonText.h"
#include "agent/session/screen/Elements.h"
#include "agent/session/screen/Survey.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

// The text that the view shows now: of a field what was typed, of a control with a value that
// value. Null for what shows none.
std::optional<std::string> textOf(const platform::UIViewRef& view);

// Its accessibility label, unless that tells what a secure field holds.
std::optional<std::string> labelOf(const platform::UIViewRef& view);

// The nearest of what the view stands in, below the window, for which `is(outer)` holds; null for
// none.
template <typename Is>
platform::UIViewRef nearestAround(const platform::UIViewRef& view, Is is) {
  for (platform::UIViewRef outer = view->superview(); outer; outer = outer->superview()) {
    if (outer->isKindOfClass(platform::uikit::UIWindow)) return nullptr;
    if (is(outer)) return outer;
  }
  return nullptr;
}

// Of the window that it stands in; null for one without.
std::optional<std::string> titleOfWindow(const platform::UIViewRef& view);

// Of a text field; null for all others.
std::optional<std::string> placeholderOf(const platform::UIViewRef& view);
// Null where the question does not arise.
std::optional<bool> isChecked(const platform::UIViewRef& view);
bool isEditable(const platform::UIViewRef& view);
// Whether keys go to it: each window remembers what has its focus, and one has the keyboard.
bool isFocused(const platform::UIViewRef& view);

// Writes the members of the description, without brackets. Texts that are nil, and states that the
// view has not got, are left out.
void describe(const platform::UIViewRef& view, Handle handle, const Place& place, JsonText& text);
// With the rectangle on the screen, and the chain of the class's kinds.
void describeWhole(const platform::UIViewRef& view, JsonText& text);

// What the document says of the members.
std::string_view descriptionInWords();

}  // namespace tarni::session
