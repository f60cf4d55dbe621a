// A bare echo in a process of its own, as the program under test is one: what an answer of the
// agent is held against.
#pragma once

#include <sys/types.h>

#include <functional>

namespace tarni::bench {

// `bound` runs in the new process, and gives a socket that is bound. Its one client is echoed until
// it leaves, then the process ends; the caller waits for it by its id, which is answered here.
pid_t startEcho(const std::function<int()>& bound);

}  // namespace tarni::bench
