// SessionProgram: the program that a session is played on: the recorded one started again, another
// one, or one that runs already. Main thread of a process without other threads, as the program is
// started by it.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "host/session/StartedProgram.h"

namespace tarni::host {

class SessionProgram {
 public:
  struct Start {
    std::string program = {};  // the start-up line as for a shell; "" for the recorded one
    bool trusts = false;       // starts the recorded one although the file may be another's work
    std::vector<std::string> runOptions = {};  // for `tarni run`
  };

  // Of a session in that file, recorded with that start-up line; `whyForeign` as readFile() tells.
  SessionProgram(std::string file, std::vector<std::string> recorded, std::string whyForeign)
      : file_(std::move(file)),
        recorded_(std::move(recorded)),
        whyForeign_(std::move(whyForeign)) {}

  // Starts the program and waits until the agent in it serves; one that was started before is
  // ended. Throws std::invalid_argument when the session's program is not known or not trusted,
  // NoSuchProgram, and std::runtime_error when it does not come up.
  void start(const Start& start);
  // Takes the program that runs; null when it is not known which one that is.
  void attach(std::optional<pid_t> program);

  // Its start-up line for a person; "" when it is not known.
  const std::string& line() const { return line_; }
  // That it seems to be the wrong program; "" when it does not.
  const std::string& warning() const { return warning_; }

  // Null for one that was not started here.
  const StartedProgram* started() const { return started_ ? &*started_ : nullptr; }
  // Asks the one that was started here to end; whether it has by then.
  bool endsBy(Deadline deadline);
  // Makes it end when it does not.
  void end() { started_.reset(); }
  // Of one that was not started here it is believed.
  bool hasEnded();

 private:
  void requireTrust(const std::vector<std::string>& command) const;
  void playOn(const std::vector<std::string>& program);

  const std::string file_;
  const std::vector<std::string> recorded_;
  const std::string whyForeign_;
  std::string line_;
  std::string warning_;
  std::optional<StartedProgram> started_;
};

}  // namespace tarni::host
