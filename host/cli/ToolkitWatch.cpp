#include "host/cli/ToolkitWatch.h"

#include <algorithm>
#include <iostream>

#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/launch/RunningProgram.h"

namespace tarni::host {

namespace {

// After it, a program's own libraries are mapped.
constexpr std::chrono::milliseconds kTimeToMap{300};
// How long a wrapper has to start its program, and an interpreter to load its libraries.
constexpr std::chrono::milliseconds kTimeToComeUp{1500};

std::string called(const ProcessSeen& process) {
  return printable(process.name) + " (process " + std::to_string(process.pid) + ")";
}

}  // namespace

bool ToolkitWatch::seesQt(pid_t pid) {
  if (hasSeen_ || hasSaid_) return hasSeen_;
  const auto processes = processesFrom(pid);
  hasSeen_ = std::ranges::any_of(processes, &ProcessSeen::usesQt);
  const auto age = Clock::now() - start_;
  if (hasSeen_ || age < kTimeToMap) return hasSeen_;
  const auto other = std::ranges::find_if(processes, &ProcessSeen::showsWindows);
  if (other != processes.end()) {
    say(called(*other) + " uses another toolkit than Qt: nothing is loaded into it");
  } else if (age >= kTimeToComeUp) {
    std::string names;
    for (const auto& process : processes) addWord(names, called(process));
    say("no Qt so far in " + names + ": the agent is loaded where Qt comes");
  }
  return false;
}

void ToolkitWatch::conclude() {
  if (!hasSeen_ && !hasSaid_ && !namesQt(command_)) {
    say(printable(command_) + " has ended and used no Qt: nothing was loaded");
  }
}

void ToolkitWatch::say(const std::string& what) {
  hasSaid_ = true;
  std::cerr << "tarni: note: " << what << '\n';
}

}  // namespace tarni::host
