// Screenshots of failures: what the screen showed when a playback command raised, for whoever asks
// later why a run failed.
//
// They go into the directory that the environment variable KIF_SCREENSHOTS names, which is made
// when only it is missing; without the variable nothing is written. Main thread.
#pragma once

#include <string>

#include "platform/Task.h"

namespace tarni::Diagnostics {

// Writes a picture of the key window (".jpg") and, beside it, the reason and the view hierarchy
// (".txt"), each whole or not at all, under a name that sorts by time and ends in `name`. What
// fails is logged and nothing else.
platform::Task<void> recordFailure(std::string name, std::string reason);

}  // namespace tarni::Diagnostics
