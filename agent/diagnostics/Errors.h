// Helpers for the places at which exceptions end. Any thread.
#pragma once

#include <string>

#include "platform/Task.h"

namespace tarni::Diagnostics {

// The reason of the exception that is being handled, for use inside a `catch`.
std::string reasonOfCurrentException();

// Starts work that nobody waits for. A platform that cannot finish at once goes on by itself, and
// what fails then ends in the log. On the main thread, like the work.
void spawnLogged(platform::Task<void> work, const char* context);

}  // namespace tarni::Diagnostics
