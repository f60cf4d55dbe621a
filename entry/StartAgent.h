// StartAgent: what every way of loading the agent ends in, and what precedes the program's end.
#pragma once

#include <string>

#include "platform/Platform.h"

namespace tarni::entry {

// Installs the platform, takes the address of the page scripts from the environment
// (TARNI_SCRIPTS), otherwise `scripts`, unless REMOTE_CDN_URL is set, and runs the agent's load
// hooks; the first call of the process only. Main thread. Never throws: an agent that cannot start
// leaves a log line and an untouched program.
void startAgent(const platform::Platform& platform, const std::string& scripts = "") noexcept;

// The program is about to end. Main thread; nothing when the agent has not started.
void endAgent() noexcept;

}  // namespace tarni::entry
