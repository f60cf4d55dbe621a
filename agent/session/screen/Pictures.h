// Pictures of views, as members of answers: {format, data (Base64), width, height, scale}. Drawn on
// the main thread, encoded with the answer.
#pragma once

#include "agent/session/protocol/Result.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

// Throws SessionError (unable to capture screen) when the view cannot be drawn.
platform::Task<platform::UIImageRef> draw(platform::UIViewRef view);

// The same of a window, with its secure fields blurred out. Throws as well where they cannot be.
platform::Task<platform::UIImageRef> drawWithoutSecrets(platform::UIWindowRef window);

// Any thread. JPEG where the platform has no PNG.
Json encoded(const platform::UIImageRef& image);

}  // namespace tarni::session
