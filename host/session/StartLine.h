// How a running program was started, from the kernel's files about it. Linux only, any thread.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tarni::host {

// The words of its start-up line, the first made absolute when it was a relative path. Empty when
// the kernel does not tell.
std::vector<std::string> startLineOf(pid_t pid);

}  // namespace tarni::host
