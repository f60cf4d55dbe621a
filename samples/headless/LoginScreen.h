// The login screen: the same content as the sample for Qt. Main thread.
#pragma once

#include <memory>

#include "backends/headless/Environment.h"

namespace tarni::samples {

// Shows the screen in a new key window and gives the window out. "Details…" opens a dialog in a
// nested event loop, as many programs do.
headless::WindowRef buildLoginScreen(headless::Environment& environment);

}  // namespace tarni::samples
