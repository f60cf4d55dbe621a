// ToolProcess: another call of this tool, as a person would make it, which ends with its owner: how
// programs are started while something else goes on. One thread at a time. The child ends when the
// thread ends that made it, so that nothing stays behind a tool that was killed: make it on one
// that lives long enough.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace tarni::host {

class ToolProcess {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // `words` are the command line behind "tarni", `environment` is added to the caller's. Throws
  // std::runtime_error when no process can be made.
  explicit ToolProcess(const std::vector<std::string>& words,
                       const std::map<std::string, std::string>& environment = {});
  ToolProcess(const ToolProcess&) = delete;
  ToolProcess& operator=(const ToolProcess&) = delete;
  // Asks it to end, and makes it when it does not.
  ~ToolProcess();

  // Waits for its end; false when it still runs then.
  bool hasEnded(Time deadline);
  pid_t pid() const { return pid_; }
  // The last lines that it and its program have printed.
  std::string lastOutput() const;
  // What they have printed since `position`, which is moved on; of much the last lines.
  std::string outputSince(off_t& position) const;

 private:
  std::string output(off_t from, off_t until) const;

  pid_t pid_ = -1;
  int output_ = -1;
  bool isOver_ = false;
};

}  // namespace tarni::host
