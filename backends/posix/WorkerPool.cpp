#include "backends/posix/WorkerPool.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

#include "backends/posix/Thread.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::posix {
namespace {

// What a thread of a pool has to do next, before it asks the pool.
struct Worker {
  const WorkerPool* pool = nullptr;
  platform::Block next;
};
thread_local Worker thisThread;

}  // namespace

WorkerPool::WorkerPool(const char* threadName, int niceness, std::size_t maximumThreads)
    : threadName_(threadName), niceness_(niceness), maximumThreads_(maximumThreads) {}

void WorkerPool::post(platform::Block block) {
  {
    const std::lock_guard lock(mutex_);
    blocks_.push_back(std::move(block));
    startThreadWhenNeeded();
  }
  // Who is woken finds the lock free.
  posted_.notify_one();
}

void WorkerPool::postAfter(double seconds, platform::Block block) {
  using Clock = std::chrono::steady_clock;
  const auto due = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                      std::chrono::duration<double>(seconds));
  platform::Block later = [due, block = std::move(block)] {
    std::this_thread::sleep_until(due);
    block();
  };
  if (thisThread.pool != this || thisThread.next) return post(std::move(later));
  thisThread.next = std::move(later);
}

void WorkerPool::startThreadWhenNeeded() {
  // Every waiting block needs an idle thread of its own: a busy one may never come back.
  if (blocks_.size() <= idleThreads_ || threads_ == maximumThreads_) return;
  try {
    startThread(threadName_, niceness_, [this] { work(); });
    ++threads_;
  } catch (const std::system_error& error) {
    platform::NSLog("No thread for %s: %s", threadName_, error.what());
  }
}

void WorkerPool::work() {
  thisThread.pool = this;
  std::unique_lock lock(mutex_);
  for (;;) {
    ++idleThreads_;
    posted_.wait(lock, [this] { return !blocks_.empty(); });
    --idleThreads_;
    platform::Block block = std::move(blocks_.front());
    blocks_.pop_front();
    lock.unlock();
    for (; block; block = std::exchange(thisThread.next, nullptr)) {
      platform::runGuarded(threadName_, block);
    }
    lock.lock();
  }
}

}  // namespace tarni::posix
