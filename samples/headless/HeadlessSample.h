// The headless sample program, without its `main`: that belongs to whoever loads an agent into it.
#pragma once

#include <functional>

namespace tarni::samples {

// Shows the login screen on the calling thread, calls `ready` (may be empty) once it is there, and
// runs until the run loop is stopped. With `skipsWaits` the waits that a command makes take no
// time. Gives the program's exit code. Once a process.
int runHeadlessSample(const std::function<void()>& ready, bool skipsWaits = false);

}  // namespace tarni::samples
