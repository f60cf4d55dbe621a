// Subject: a program to look at, as it runs. Plain values and functions, any thread.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace tarni::host {

struct Subject {
  std::string name;                       // as --in takes it; that of its file when it has none
  pid_t pid = -1;                         // -1 when it is not known
  std::string session;                    // the address of its session channel
  std::string line = {};                  // how it was started, for a person
  std::vector<std::string> command = {};  // the same in words; empty when it is not known
};

// Those of this user that run and have a session channel.
std::vector<Subject> runningSubjects();
// Null when it does not run, or has no session channel.
std::optional<Subject> subjectOf(pid_t pid);
// The one that this call of `tarni run` has started, once its channel is there.
std::optional<Subject> subjectStartedBy(pid_t run);
// The one with this address, whatever runs there.
Subject subjectAt(const std::string& session);

}  // namespace tarni::host
