// ChildProcess: another program, which ends with its owner. One thread at a time. It ends when the
// thread ends that made it, so that nothing stays behind a tool that was killed: make it on one
// that lives long enough.
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarni::host {

class ChildProcess {
 public:
  using Time = std::chrono::steady_clock::time_point;

  enum class Output { Kept, Shared };  // for `lastOutput`, or on this tool's standard error

  struct Call {
    std::string file;                                     // as execvp takes it
    std::vector<std::string> words;                       // the first is the name
    std::map<std::string, std::string> environment = {};  // is added to the caller's
    Output output = Output::Kept;
    std::chrono::seconds timeToEnd = std::chrono::seconds(5);  // before it is made to
    int whenAlone = SIGTERM;  // what it gets when this process was killed
  };

  // Throws std::runtime_error when no process can be made; a file that cannot be run ends at once.
  explicit ChildProcess(Call call);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Asks it to end, and makes it when it does not.
  ~ChildProcess();

  // Once; the time before it is made to end runs from here.
  void askToEnd();
  // Waits for its end; false when it still runs then.
  bool hasEnded(Time deadline);
  pid_t pid() const { return pid_; }
  // The last lines that it and what it started have printed, when it is kept.
  std::string lastOutput() const;
  // When they printed that, in milliseconds since 1970.
  long lastOutputTime() const;
  // What they have printed since `position`, which is moved on; of much the last lines.
  std::string outputSince(off_t& position) const;

 private:
  std::string output(off_t from, off_t until) const;

  std::chrono::seconds timeToEnd_;
  pid_t pid_ = -1;
  int output_ = -1;
  bool isOver_ = false;
  std::optional<Time> askedAt_;
};

}  // namespace tarni::host
