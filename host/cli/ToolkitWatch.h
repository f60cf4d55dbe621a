// ToolkitWatch: whether a program that was started uses Qt, itself or in what it starts; said to
// the person once when it does not. Main thread.
#pragma once

#include <sys/types.h>

#include <string>

#include "host/guard/Clock.h"

namespace tarni::host {

class ToolkitWatch {
 public:
  // Begins when the program does. `command` is what was started.
  explicit ToolkitWatch(std::string command) : command_(std::move(command)) {}

  // Whether Qt has been seen in the process or in one that it has started.
  bool seesQt(pid_t pid);
  // When the program has ended.
  void conclude();

 private:
  void say(const std::string& what);

  std::string command_;
  Clock::time_point start_ = Clock::now();
  bool hasSeen_ = false;
  bool hasSaid_ = false;
};

}  // namespace tarni::host
