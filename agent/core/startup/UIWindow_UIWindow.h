// UIWindow(UIWindow): notes the window class in the shared state. Main thread.
#pragma once

#include "platform/ObjectiveC/Class.h"

namespace tarni::UIWindow {

// The load hook: stores `receiver` as "currentUIWindow" when it is exactly UIWindow.
void load(platform::Class receiver);

}  // namespace tarni::UIWindow
