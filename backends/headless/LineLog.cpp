#include "backends/headless/LineLog.h"

#include <algorithm>
#include <exception>

#include "backends/headless/History.h"

namespace tarni::headless {

void LineLog::write(std::string_view line) noexcept {
  system_.write(line);
  try {
    const std::lock_guard lock(mutex_);
    remember(lines_, std::string(line));
  } catch (const std::exception&) {
    // Out of memory: the system log has the line.
  }
}

std::vector<std::string> LineLog::lines() const {
  const std::lock_guard lock(mutex_);
  return {lines_.begin(), lines_.end()};
}

bool LineLog::contains(std::string_view line) const {
  const std::lock_guard lock(mutex_);
  return std::ranges::find(lines_, line) != lines_.end();
}

void LineLog::clear() {
  const std::lock_guard lock(mutex_);
  lines_.clear();
}

}  // namespace tarni::headless
