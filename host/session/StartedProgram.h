// StartedProgram: the program that a session is played on, started for it with the agent loaded and
// ended with its owner. Where this system lets it, the program has a network of its own, so that it
// never meets another one on the agent's ports. Main thread of a process without other threads.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/guard/Clock.h"
#include "host/launch/ProgramRegistry.h"
#include "host/launch/ToolProcess.h"

namespace tarni::host {

class StartedProgram {
 public:
  // Started by another call of this tool, as a person would. `runOptions` go to its "run". Throws
  // std::runtime_error when no process can be made.
  StartedProgram(const std::vector<std::string>& command,
                 const std::vector<std::string>& runOptions);

  // Waits until the agent serves and goes into the program's network. Throws std::runtime_error
  // with what the program has printed when it does not come up.
  void awaitAgent(Deadline deadline);

  // The address of its session channel, once it is there. Throws std::runtime_error when it does
  // not come.
  std::string awaitSession(Deadline deadline) const;

  // Asks it to end; whether it has by then.
  bool endsBy(Deadline deadline);
  // Waits for the program's end; false when it still runs then.
  bool hasEnded(Deadline deadline);
  // The last lines that the program has printed.
  std::string lastOutput() const { return process_->lastOutput(); }
  // As of ToolProcess.
  std::string outputSince(off_t& position) const { return process_->outputSince(position); }

 private:
  bool isServed() const;
  std::optional<RegisteredProgram> registered() const;

  std::string name_;  // among the isolated programs; "" when it is not one of them
  std::optional<ToolProcess> process_;
};

}  // namespace tarni::host
