// Attaching: the agent brought into a process that runs already, by a debugger. Used by `tarni
// attach`; any thread.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace tarni::host {

// Loads the agent into an attachable process, by gdb and at a moment when its main thread waits;
// the process stands still for less than a second. Returns what the launcher in there says of it
// ("… uses Qt 5.15.8: agent loaded, ports 9892 and 9898"). Throws std::runtime_error with a
// sentence for a person: no gdb, the process is busy or the debugger may not hold it, the library
// does not fit.
std::string attachAgent(pid_t pid, const std::filesystem::path& library);

}  // namespace tarni::host
