// Steps: what the channel tells of acts and of the elements that they are about. Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "agent/acts/Act.h"
#include "agent/session/screen/Locators.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

// The element as it is described, with what is near it and the ways to find it again.
std::shared_ptr<PortraitText> portraitOf(const platform::UIViewRef& view, ReachedBy way);
// Makes the portrait of a web view that of what lies there in its page, or has the focus there, if
// the page says so. Is complete then.
platform::Task<void> portrayInPage(platform::UIViewRef webView,
                                   std::optional<platform::CGPoint> place,
                                   std::shared_ptr<PortraitText> portrait);

// Makes of a text in a page what the page says that it is: keys that nothing took as text, a
// secret. A page that is busy handles presses and keys late, and scripts in between: what takes
// text and was pressed by the `click` right before is what they went to, whatever the page says.
// What nobody has spoken of is a secret.
void settleText(Act& act, const Act& click);

// JSON text. Times are told in milliseconds since 1970.
std::string stepOf(const Act& act);

// What the document says of the members.
std::string_view stepInWords();

}  // namespace tarni::session
