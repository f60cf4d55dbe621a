// ProgramLauncher: starts a program with the agent in it, passes signals on to it and waits for its
// end. Used by `tarni run`, on the main thread of a process without other threads.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarni::host {

struct Launch {
  std::vector<std::string> command;
  std::map<std::string, std::string> environment = {};  // added to the caller's
  bool isolated = false;                                // in a network of its own
  // Where the program's session channel opens, as PID.session; the folder is this user's alone.
  // Empty for no channel.
  std::filesystem::path sessionFolder = {};
  // The program has means of its own, which are gone with this process: it is ended when this
  // process is killed. Any other one goes on then.
  bool endsWithThis = false;
  // Called once, before the program is there: makes what `onEnded` takes away.
  std::function<void()> onStarting = {};
  // Called once, when the program is there but has not begun.
  std::function<void(pid_t)> onStarted = {};
  // Called once, when the program has ended; no signal ends this process before it is done. When
  // this process is killed, another one calls it, which knows nothing of what came after the start
  // of `runToTheEnd`.
  std::function<void()> onEnded = {};
  // Called every few milliseconds until it returns true: it is done then.
  std::function<bool(pid_t)> onTick = {};
};

// The library that carries the agent: $TARNI_LIBRARY, or libtarni.so beside this tool (in ../lib or
// ../lib/tarni). Throws std::runtime_error that names the places looked at.
std::filesystem::path agentLibrary();

// `environment` with the library put in front of LD_PRELOAD.
void addAgent(std::map<std::string, std::string>& environment,
              const std::filesystem::path& library);

// Where the page scripts are, beside this tool (../share/tarni/webscripts).
std::filesystem::path scriptsFolder();

// The path of the session channel of a program that was started with that folder.
std::filesystem::path sessionPath(const std::filesystem::path& folder, pid_t pid);

// Runs the program to its end; its exit code, or 128 + N when signal N ended it, as a shell says
// it. Throws std::runtime_error when it cannot be started.
int runToTheEnd(const Launch& launch);

}  // namespace tarni::host
