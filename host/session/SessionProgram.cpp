#include "host/session/SessionProgram.h"

#include <stdexcept>

#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/launch/RunningProgram.h"
#include "host/session/StartLine.h"

namespace tarni::host {

namespace {

constexpr std::chrono::seconds kTimeToStart{20};
constexpr std::chrono::seconds kTimeForAnEnd{3};

}  // namespace

void SessionProgram::start(const Start& start) {
  const auto command = start.program.empty() ? recorded_ : wordsOf(start.program);
  if (command.empty()) {
    throw std::invalid_argument(file_ +
                                ":1: the session does not tell its program: name it by --program "
                                "or play with --attach-running or --in");
  }
  if (start.program.empty() && !start.trusts) requireTrust(command);
  requireProgram(command.front());
  playOn(command);
  started_.reset();
  started_.emplace(command, start.runOptions);
  started_->awaitAgent(Clock::now() + kTimeToStart);
}

void SessionProgram::attach(std::optional<pid_t> program) {
  playOn(program ? startLineOf(*program) : std::vector<std::string>());
}

bool SessionProgram::endsBy(Deadline deadline) {
  return !started_ || started_->endsBy(deadline);
}

bool SessionProgram::hasEnded() {
  return !started_ || started_->hasEnded(Clock::now() + kTimeForAnEnd);
}

// Who writes a session says what is started.
void SessionProgram::requireTrust(const std::vector<std::string>& command) const {
  if (whyForeign_.empty()) return;
  throw std::invalid_argument(file_ + " starts a program of its own choice, and " + whyForeign_ +
                              ": give --trust to start " + inQuotes(joined(command)) +
                              ", or name the program by --program");
}

void SessionProgram::playOn(const std::vector<std::string>& program) {
  line_ = joined(program);
  const auto expected = programName(recorded_);
  const auto name = programName(program);
  if (expected.empty() || name.empty() || expected == name) return;
  warning_ = "the session was recorded with " + expected + ", not with " + name;
}

}  // namespace tarni::host
