#include "backends/posix/SystemLog.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>

#include "backends/posix/Thread.h"

namespace tarni::posix {
namespace {

constexpr std::size_t kBufferLimit = 1024 * 1024;
constexpr std::size_t kKeptCapacity = 64 * 1024;
constexpr std::size_t kLongestLine = 32 * 1024;
constexpr double kExitBound = 0.5;
// The writer collects lines for so long before it writes again, so that a burst costs the callers
// no wake-up a line.
constexpr std::chrono::milliseconds kCollectingTime{10};

struct LineHeader {
  double time;
  std::uint32_t length;
};

double now() {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::string environment(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

class SystemLog::Writer {
 public:
  explicit Writer(std::unique_ptr<LogDestination> destination)
      : destination_(std::move(destination)) {}

  void append(std::string_view line) {
    if (line.size() <= kLongestLine) return appendLine(line, "");
    appendLine(line.substr(0, kLongestLine), "... (" + std::to_string(line.size()) + " bytes)");
  }

  bool flush(double seconds) {
    std::unique_lock lock(mutex_);
    if (!isStarted_ || process_ != getpid()) return appended_ == written_;
    const std::uint64_t goal = appended_;
    ++flushes_;
    appendedOrFlushed_.notify_one();
    const bool isDone = progressed_.wait_for(lock, std::chrono::duration<double>(seconds),
                                             [&] { return written_ >= goal; });
    --flushes_;
    return isDone;
  }

 private:
  void appendLine(std::string_view line, std::string_view suffix) {
    const LineHeader header{now(), static_cast<std::uint32_t>(line.size() + suffix.size())};
    const std::lock_guard lock(mutex_);
    if (lines_.size() + sizeof header + header.length > kBufferLimit) {
      ++dropped_;
      return;
    }
    lines_.append(reinterpret_cast<const char*>(&header), sizeof header);
    lines_.append(line).append(suffix);
    ++appended_;
    if (!isStarted_) start();
    if (isAsleep_) appendedOrFlushed_.notify_one();
  }

  void start() {
    try {
      startThread("tarni-log", 0, [this] { run(); });
      isStarted_ = true;
      process_ = getpid();
    } catch (const std::system_error&) {
      // The next line tries again.
    }
  }

  [[noreturn]] void run() {
    std::string batch;
    std::unique_lock lock(mutex_);
    for (;;) {
      isAsleep_ = true;
      appendedOrFlushed_.wait(lock, [this] { return !lines_.empty(); });
      isAsleep_ = false;
      batch.swap(lines_);
      const std::uint64_t dropped = std::exchange(dropped_, 0);
      lock.unlock();
      const std::uint64_t count = writeOut(batch, dropped);
      batch.clear();
      if (batch.capacity() > kKeptCapacity) batch.shrink_to_fit();
      lock.lock();
      written_ += count;
      progressed_.notify_all();
      appendedOrFlushed_.wait_for(lock, kCollectingTime, [this] { return flushes_ > 0; });
    }
  }

  std::uint64_t writeOut(std::string_view batch, std::uint64_t dropped) {
    std::uint64_t count = 0;
    while (!batch.empty()) {
      LineHeader header{};
      std::memcpy(&header, batch.data(), sizeof header);
      destination_->write(header.time, batch.substr(sizeof header, header.length));
      batch.remove_prefix(sizeof header + header.length);
      ++count;
    }
    if (dropped > 0) {
      destination_->write(now(), std::to_string(dropped) + " log lines dropped");
    }
    destination_->flush();
    return count;
  }

  const std::unique_ptr<LogDestination> destination_;
  std::mutex mutex_;
  std::condition_variable appendedOrFlushed_;
  std::condition_variable progressed_;
  std::string lines_;  // a header and the text for each line
  std::uint64_t appended_ = 0;
  std::uint64_t written_ = 0;
  std::uint64_t dropped_ = 0;
  int flushes_ = 0;
  pid_t process_ = 0;
  bool isStarted_ = false;
  bool isAsleep_ = false;
};

namespace {

std::atomic<SystemLog*> flushedAtExit = nullptr;

void flushAtExit() {
  if (SystemLog* const log = flushedAtExit) log->flush(kExitBound);
}

}  // namespace

SystemLog::SystemLog() : SystemLog(openLogDestination(environment("TARNI_LOG"))) {
  if (!flushedAtExit.exchange(this)) std::atexit(flushAtExit);
}

SystemLog::SystemLog(std::unique_ptr<LogDestination> destination)
    : writer_(*new Writer(std::move(destination))) {}

SystemLog::~SystemLog() {
  SystemLog* self = this;
  flushedAtExit.compare_exchange_strong(self, nullptr);
}

void SystemLog::write(std::string_view line) noexcept {
  try {
    writer_.append(line);
  } catch (...) {
    // Without memory there is no line.
  }
}

bool SystemLog::flush(double seconds) noexcept {
  return writer_.flush(seconds);
}

}  // namespace tarni::posix
