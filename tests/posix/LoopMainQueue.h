// LoopMainQueue: a main queue on an event loop as small as one can be, for tests. The thread that
// makes it is the main thread and runs the loop.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/Dispatch/SerialMainQueue.h"

namespace tarni::test {

class LoopMainQueue : public platform::SerialMainQueue {
 public:
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }

  // Any thread: an event of the program's own.
  void post(std::function<void()> event) {
    const std::lock_guard lock(mutex_);
    events_.push_back(std::move(event));
    posted_.notify_one();
  }

  // Main thread, also from inside an event: handles events until `isDone` holds after one. False
  // when none came for a long time.
  bool runUntil(const std::function<bool()>& isDone) {
    while (!isDone()) {
      std::unique_lock lock(mutex_);
      if (!posted_.wait_for(lock, std::chrono::seconds(20), [&] { return !events_.empty(); })) {
        return false;
      }
      const std::function<void()> event = std::move(events_.front());
      events_.pop_front();
      lock.unlock();
      event();
    }
    return true;
  }

  int wakes() const { return wakes_; }

 protected:
  void wake() noexcept override {
    ++wakes_;
    post([this] { drain(); });
  }

 private:
  const std::thread::id mainThread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> events_;
  std::atomic<int> wakes_ = 0;
};

}  // namespace tarni::test
