// NSLog: one line to the system log. Any thread. Never throws and never blocks on the log's reader;
// where the line ends up is the backend's business.
#pragma once

#include <string_view>

namespace tarni::platform {

// Receives finished lines, without a line break. Any thread.
class SystemLog {
 public:
  virtual ~SystemLog() = default;
  virtual void write(std::string_view line) noexcept = 0;
};

// printf formatting; an object ("%@") is passed as its text with "%s".
[[gnu::format(printf, 1, 2)]] void NSLog(const char* format, ...) noexcept;

}  // namespace tarni::platform
