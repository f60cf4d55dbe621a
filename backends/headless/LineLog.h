// LineLog: the system log, which also remembers its latest lines. Any thread.
#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "backends/posix/SystemLog.h"

namespace tarni::headless {

class LineLog : public platform::SystemLog {
 public:
  void write(std::string_view line) noexcept override;
  std::vector<std::string> lines() const;
  bool contains(std::string_view line) const;
  void clear();

 private:
  posix::SystemLog system_;
  mutable std::mutex mutex_;
  std::deque<std::string> lines_;
};

}  // namespace tarni::headless
