// WorkerPool: threads that run blocks, as many as are kept busy at once up to a limit. None is
// started before it is needed, none ever ends. Any thread.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>

#include "platform/Dispatch/Dispatch.h"

namespace tarni::posix {

class WorkerPool {
 public:
  // `threadName` must outlive the pool.
  WorkerPool(const char* threadName, int niceness, std::size_t maximumThreads);

  // A block waits for a free thread only when the limit is reached.
  void post(platform::Block block);
  // Once `seconds` have passed, for which a thread sleeps: nobody else is woken for it. What a
  // block of the pool asks for goes on on its own thread behind it, so it should be the last that
  // it does.
  void postAfter(double seconds, platform::Block block);

 private:
  void startThreadWhenNeeded();
  [[noreturn]] void work();

  const char* const threadName_;
  const int niceness_;
  const std::size_t maximumThreads_;
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<platform::Block> blocks_;
  std::size_t threads_ = 0;
  std::size_t idleThreads_ = 0;
};

}  // namespace tarni::posix
