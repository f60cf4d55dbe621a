// RunningProgram: programs and the processes that run them, as far as the agent is concerned: what
// is loaded in them, and what keeps it out. Linux only, any thread.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tarni::host {

// Throws NoSuchProgram when nothing of that name or path can be started.
void requireProgram(const std::string& command);

// Whether the file of that program names a library of Qt's.
bool namesQt(const std::string& command);

struct ProcessSeen {
  pid_t pid = -1;
  std::string name;
  bool usesQt = false;        // it has Qt's library for windows mapped
  bool showsWindows = false;  // it has some library for windows mapped
};

// The process and all that it has started, as far as this user may look.
std::vector<ProcessSeen> processesFrom(pid_t pid);

// The processes of this user in which the agent runs, loaded or built in.
std::vector<ProcessSeen> processesWithAgent();

// Why the agent cannot be loaded into the program of that name or path before it starts: a launcher
// that puts its program into a sandbox, a program that has the toolkit built in. Empty when nothing
// speaks against it.
std::string whyOutOfReach(const std::string& command);

// Throws with a sentence for a person when the agent cannot be brought into the process:
// NoSuchProgram when there is none, otherwise (not permitted, no toolkit, agent already there, …)
// std::runtime_error.
void checkAttachable(pid_t pid);
// Why a debugger may not hold the process.
std::string whyNotPermitted(pid_t pid);

}  // namespace tarni::host
