// SystemLog: the log of the agent. The environment variable TARNI_LOG says where it goes: "stderr",
// or the path of a file to append to; without it, to syslog.
//
// A line is copied into a bounded buffer and written by a thread of its own, which starts with the
// first line. Lines that find the buffer full are counted, and the count is logged once there is
// room. What is in the buffer when the process exits is written then, for at most half a second.
// Any thread.
#pragma once

#include <memory>
#include <string_view>

#include "backends/posix/LogDestination.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::posix {

class SystemLog : public platform::SystemLog {
 public:
  // TARNI_LOG is read now.
  SystemLog();
  explicit SystemLog(std::unique_ptr<LogDestination> destination);
  // Leaves the writer alone with what it has.
  ~SystemLog() override;

  // Very long lines are cut, with a note of their length.
  void write(std::string_view line) noexcept override;
  // Waits until the lines logged so far are written; false when that takes more than `seconds`.
  bool flush(double seconds) noexcept;

 private:
  class Writer;
  Writer& writer_;  // shared with its thread, never destroyed
};

}  // namespace tarni::posix
