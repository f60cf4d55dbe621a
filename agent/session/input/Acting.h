// Acting: what the methods that act on elements share: the element made ready for a person's hands.
// Main thread.
#pragma once

#include <optional>

#include "agent/session/protocol/SessionError.h"
#include "agent/session/screen/Elements.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

// Makes the view's window the key window. Throws SessionError (element not interactable) when
// another window keeps the user from it.
platform::Task<void> turnToWindowOf(platform::UIViewRef view);

// Scrolls everything round the view until as much of it as possible is in sight.
platform::Task<void> bringIntoView(platform::UIViewRef view);

// The web view of the page; throws SessionError (stale element reference) when it has gone.
platform::UIViewRef webViewOf(const PageElement& element);

// Throws SessionError (element not interactable) for a disabled one.
void requireEnabled(const platform::UIViewRef& view);

// Gives an element of a window or of a page the keyboard. Throws SessionError (element not
// interactable) for a disabled one of a window.
platform::Task<void> giveFocus(Handle element);

// A point of the view, in its window's coordinates, at which it takes a press: the middle of what
// is in sight of it, or else another. Throws SessionError: element not interactable when nothing of
// it is in sight, element click intercepted when something else takes the press everywhere.
platform::CGPoint pressablePoint(const platform::UIViewRef& view);

// Ready to be pressed: in the key window, in sight; at the place that is asked for, from its upper
// left corner, if it takes the press there.
platform::Task<platform::CGPoint> readyToPress(Handle element,
                                               std::optional<platform::CGPoint> place);
// The same of an element of a page, in its web view's window; at the place that is asked for, or
// not at all. Throws SessionError (unsupported operation) where the pages get no presses.
platform::Task<platform::CGPoint> readyToPress(PageElement element,
                                               std::optional<platform::CGPoint> place);

}  // namespace tarni::session
