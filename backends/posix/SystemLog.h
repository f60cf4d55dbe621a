// SystemLog: where log lines go. The environment variable TARNI_LOG says where: "stderr", or the
// path of a file to append to; without it they go to syslog.
//
// A line is copied into a bounded buffer and written by a thread of its own, which starts with the
// first line. Lines that find the buffer full are counted, and the count is logged once there is
// room. What is still in the buffer when the process exits is written then, unless that takes
// longer than a fixed bound. Any thread.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Foundation/NSLog.h"

namespace tarni::posix {

// Where finished lines end up. Used by the writer thread only.
class LogDestination {
 public:
  virtual ~LogDestination() = default;
  // `time`: seconds since the epoch at which the line was logged. `line` has no line break.
  virtual void write(double time, std::string_view line) = 0;
  // Called when no line waits.
  virtual void flush() = 0;
};

// What TARNI_LOG names; `target` null or empty stands for syslog, as does a file that cannot be
// opened (the first line then says so).
std::unique_ptr<LogDestination> openLogDestination(const char* target);

class SystemLog : public platform::SystemLog {
 public:
  // Logs to what TARNI_LOG names at the time of the first line.
  SystemLog();
  // For tests. The object must then outlive its last line being written (see `flush`).
  explicit SystemLog(std::unique_ptr<LogDestination> destination);
  ~SystemLog() override;

  void write(std::string_view line) noexcept override;
  // Waits until the lines logged so far are written; false when that takes longer.
  bool flush(double seconds) noexcept;

 private:
  struct State;
  State* state_;  // shared with the writer thread, never destroyed
};

}  // namespace tarni::posix
