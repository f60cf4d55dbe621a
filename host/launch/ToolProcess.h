// ToolProcess: another call of this tool, as a person would make it: how programs are started while
// something else goes on.
#pragma once

#include "host/launch/ChildProcess.h"

namespace tarni::host {

class ToolProcess : public ChildProcess {
 public:
  // `words` are the command line behind "tarni". Throws std::runtime_error when no process can be
  // made.
  explicit ToolProcess(const std::vector<std::string>& words,
                       std::chrono::seconds timeToEnd = std::chrono::seconds(5));
};

}  // namespace tarni::host
