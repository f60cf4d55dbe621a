#include "host/inspector/Subject.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include "host/launch/ProgramRegistry.h"
#include "host/launch/RunningProgram.h"
#include "host/session/StartLine.h"

namespace tarni::host {

std::vector<Subject> runningSubjects() {
  const ProgramRegistry registry;
  std::vector<Subject> subjects;
  for (const auto& program : registry.all()) {
    if (auto session = registry.sessionOf(program)) {
      subjects.push_back({program.name, program.pid, *std::move(session), program.command,
                          startLineOf(program.pid)});
    }
  }
  return subjects;
}

std::optional<Subject> subjectOf(pid_t pid) {
  auto subjects = runningSubjects();
  const auto found = std::ranges::find(subjects, pid, &Subject::pid);
  return found == subjects.end() ? std::nullopt : std::optional(std::move(*found));
}

std::optional<Subject> subjectStartedBy(pid_t run) {
  for (const auto& process : processesFrom(run)) {
    if (auto subject = subjectOf(process.pid)) return subject;
  }
  return std::nullopt;
}

Subject subjectAt(const std::string& session) {
  for (auto& subject : runningSubjects()) {
    if (subject.session == session) return std::move(subject);
  }
  return {session, -1, session};
}

}  // namespace tarni::host
