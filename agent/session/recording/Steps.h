// Steps: what the channel tells of acts and of the elements that they are about. Main thread.
#pragma once

#include <string>

#include "agent/acts/Act.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

// The element as it is described, with what is near it and the ways to find it again.
Portrait portraitOf(const platform::UIViewRef& view);

// JSON text. Times are told in milliseconds since 1970.
std::string stepOf(const Act& act);

// What the document says of the members.
std::string_view stepInWords();

}  // namespace tarni::session
