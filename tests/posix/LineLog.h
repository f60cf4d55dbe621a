// LineLog: a log that keeps its lines. Any thread.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation/NSLog.h"

namespace tarni::test {

class LineLog : public platform::SystemLog {
 public:
  void write(std::string_view line) noexcept override {
    std::unique_lock lock(mutex_);
    lines_.emplace_back(line);
    written_.notify_all();
    if (heldPart_.empty() || line.find(heldPart_) == std::string_view::npos) return;
    const std::shared_future<void> release = release_;
    lock.unlock();
    release.wait();
  }

  // Whoever writes a line that holds `part` waits for `release`.
  void holdAt(std::string part, std::shared_future<void> release) {
    const std::lock_guard lock(mutex_);
    heldPart_ = std::move(part);
    release_ = std::move(release);
  }

  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

  // Those that hold the part.
  std::vector<std::string> linesWith(std::string_view part) const {
    std::vector<std::string> found = lines();
    std::erase_if(found, [&](const std::string& line) { return line.find(part) == line.npos; });
    return found;
  }

  // Waits for so many lines that hold `part`; false when they do not come for a long time.
  bool waitFor(const std::string& part, long lines = 1) const {
    std::unique_lock lock(mutex_);
    return written_.wait_for(lock, std::chrono::seconds(20), [&] {
      return std::ranges::count_if(lines_, [&](const std::string& line) {
               return line.find(part) != std::string::npos;
             }) >= lines;
    });
  }

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable written_;
  std::vector<std::string> lines_;
  std::string heldPart_;
  std::shared_future<void> release_;
};

}  // namespace tarni::test
