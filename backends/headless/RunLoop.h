// RunLoop: the main thread's event loop. It serves timers, posted blocks and the main queue.
//
// The thread that makes it is the main thread. It is the main loop of a program (`run`), and tests
// drive it by hand (`runUntil`, `pump`). Exceptions that leave a block are logged and dropped.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <map>
#include <mutex>
#include <thread>

#include "backends/headless/ProcessInfo.h"
#include "platform/Dispatch/SerialMainQueue.h"
#include "platform/UIKit/RunLoopObserver.h"

namespace tarni::headless {

class RunLoop : public platform::SerialMainQueue {
 public:
  using TimerId = unsigned long;

  explicit RunLoop(ProcessInfo& clock) : clock_(clock) {}

  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }

  // Any thread: runs `block` in the loop, also in a nested one.
  void post(platform::Block block);
  // Main thread: runs `block` once after `seconds`.
  TimerId after(double seconds, platform::Block block);
  void cancel(TimerId timer) { timers_.erase(timer); }

  // Main thread: serves everything until `stop`.
  void run();
  // Any thread: ends the outermost `run` and all loops inside it.
  void stop();
  // Main thread: serves everything until `done` answers true (then true), or until `seconds` have
  // passed or the loop was stopped (then false). Called from inside the loop it is a nested loop.
  bool runUntil(const std::function<bool()>& done,
                double seconds = std::numeric_limits<double>::infinity());
  // Main thread: serves what is due now; false when there was nothing.
  bool pump();
  // Main thread: serves timers and posted blocks, not the main queue, for `seconds`. With a virtual
  // clock it only skips them.
  void wait(double seconds);

  // Main thread: told before and after every sleep; null takes it off.
  void setObserver(platform::RunLoopObserver* observer) { observer_ = observer; }

  // Grows with all that is served, and with each call from outside, before which the main thread
  // may have done anything. Any thread.
  std::uint64_t workCount() const { return workCount_; }

  // Called at the start of every nested loop.
  void onNestedLoop(std::function<void()> action) { nestedLoop_ = std::move(action); }

 protected:
  void wake() noexcept override;

 private:
  void note(std::string_view served);
  bool serve();
  void sleepAndTell(double deadline);
  bool serveTimers();
  bool servePosted();
  bool serveMainQueue();
  // Until something is to be served or the clock shows `deadline`.
  void sleepUntil(double deadline);
  bool isStopped();
  double now() const { return clock_.systemUptime(); }
  double nextTimer() const;

  struct Timer {
    double due;
    platform::Block block;
  };

  ProcessInfo& clock_;
  std::thread::id mainThread_ = std::this_thread::get_id();
  std::map<TimerId, Timer> timers_;
  TimerId lastTimer_ = 0;
  int depth_ = 0;
  std::function<void()> nestedLoop_;
  platform::RunLoopObserver* observer_ = nullptr;
  std::string_view beganWith_;  // since the last sleep; empty for nothing
  std::atomic<std::uint64_t> workCount_ = 0;

  std::mutex mutex_;  // guards what follows
  std::condition_variable woken_;
  std::deque<platform::Block> posted_;
  bool mainQueueWaits_ = false;
  bool stopped_ = false;
};

}  // namespace tarni::headless
