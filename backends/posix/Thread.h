// How every thread of ours is started.
#pragma once

#include <functional>

namespace tarni::posix {

// Starts a detached thread that blocks all signals, so that the application's handlers never run
// on it. `name` has at most 15 letters; `niceness` is added to the process's own. Throws
// std::system_error when the system gives no thread.
void startThread(const char* name, int niceness, std::function<void()> body);

}  // namespace tarni::posix
