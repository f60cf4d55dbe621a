// LogDestination: where finished log lines end up.
#pragma once

#include <memory>
#include <string_view>

namespace tarni::posix {

// Used by one thread at a time.
class LogDestination {
 public:
  virtual ~LogDestination() = default;
  // `time`: seconds since the epoch at which the line was logged.
  virtual void write(double time, std::string_view line) = 0;
  // Called when no line waits.
  virtual void flush() = 0;
};

// "stderr", or the path of a file that is appended to; empty is syslog, and so is a file that
// cannot be opened, after a line that says so.
std::unique_ptr<LogDestination> openLogDestination(std::string_view target);

}  // namespace tarni::posix
