// QtPlatform: the platform that a Qt program is.
#pragma once

#include "backends/qt/input/QtEventDispatch.h"
#include "platform/Platform.h"

namespace tarni::qt {

// Made once, on the GUI thread, while the program's application object exists; lives as long as the
// process. From then on every event of the program passes through "sendEvent:".
const platform::Platform& qtPlatform();

// The platform's one dispatcher, for whoever makes events. Makes the platform.
QtEventDispatch& eventDispatch();

}  // namespace tarni::qt
