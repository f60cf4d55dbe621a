// Program: a child process under test, ended with its last owner. Used by tests on one thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace tarni::test {

// How long a test waits for what will come. A machine that is busy, or reads a web engine from its
// disk for the first time, is slow; only what fails takes as long.
inline constexpr std::chrono::seconds kPatience{60};

class Program {
 public:
  using Environment = std::map<std::string, std::string>;

  // Starts `command` with `environment` added to the caller's (an empty value removes a variable).
  // Its standard output and error go to a file that `output()` reads. Throws std::runtime_error
  // when it cannot be started.
  explicit Program(std::vector<std::string> command, const Environment& environment = {});
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  // Prints what it printed, and what it is at, when an exception ends the test: that does not say
  // why.
  ~Program();

  pid_t pid() const { return pid_; }
  bool isRunning();
  // Waits for its end; the exit status, 128 + N when signal N ended it. Throws on time-out.
  int wait(std::chrono::milliseconds timeout);
  void signal(int number) const;
  std::string output() const;
  // What its threads are at, from gdb; "" when it has ended.
  std::string stacks();

 private:
  pid_t pid_ = -1;
  int status_ = 0;
  std::string outputPath_;
};

// Runs a command to its end and returns what it printed; throws when it exits with other than 0.
std::string run(const std::vector<std::string>& command,
                const Program::Environment& environment = {});

// Asks `condition` again and again (every 5 ms) until it holds; false after the time-out.
template <typename Condition>
bool eventually(Condition condition, std::chrono::milliseconds timeout = kPatience);

// The path of something that the build made, from the build folder ("lib/libtarni.so").
std::string built(const std::string& path);

// The value of LD_PRELOAD that loads `libraries`, separated by colons. The address sanitizer's
// runtime comes first, as it insists.
std::string preload(const std::string& libraries);

// What loads the agent into a Qt program without a display. Leaks are not looked for: such a
// program ends with the agent's threads running and, perhaps, a command half done.
Program::Environment agentEnvironment();

void pauseBetweenAttempts();

template <typename Condition>
bool eventually(Condition condition, std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    pauseBetweenAttempts();
  }
  return true;
}

}  // namespace tarni::test
