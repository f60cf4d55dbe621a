// Where exceptions of work that nobody waits for end.
#pragma once

#include "platform/Task.h"

namespace tarni::Diagnostics {

// Starts work that nobody waits for. A platform that cannot finish at once goes on by itself, and
// what fails then ends in the log. On the main thread, like the work.
void spawnLogged(platform::Task<void> work, const char* context);

}  // namespace tarni::Diagnostics
