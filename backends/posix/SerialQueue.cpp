#include "backends/posix/SerialQueue.h"

#include <utility>

#include "platform/Dispatch/InsideQueue.h"
#include "platform/Foundation/Guarded.h"

namespace tarni::posix {

bool SerialQueue::isCurrent() const {
  return platform::InsideQueue::isInside(*this);
}

void SerialQueue::async(platform::Block block) {
  const Lock lock(mutex_);
  blocks_.push_back(std::move(block));
  if (!isRunning_) schedule();
}

void SerialQueue::sync(const platform::Block& block) {
  if (isCurrent()) {
    platform::runGuarded(label_.c_str(), block);
    return;
  }
  bool isDone = false;
  Lock lock(mutex_);
  blocks_.emplace_back([&] {
    platform::runGuarded(label_.c_str(), block);
    const Lock doneLock(mutex_);
    isDone = true;
  });
  ++waiters_;
  while (!isDone) {
    if (isRunning_) {
      progressed_.wait(lock);
    } else {
      run(lock, [&] { return isDone; });
    }
  }
  --waiters_;
}

void SerialQueue::runNowOrAsync(platform::Block block) {
  Lock lock(mutex_);
  const bool isIdle = !isRunning_ && blocks_.empty();
  blocks_.push_back(std::move(block));
  if (isIdle) {
    bool isFirst = true;
    run(lock, [&] { return !std::exchange(isFirst, false); });
  } else if (!isRunning_) {
    schedule();
  }
}

void SerialQueue::schedule() {
  if (std::exchange(isScheduled_, true)) return;
  pool_.post([self = shared_from_this()] { self->runScheduled(); });
}

void SerialQueue::runScheduled() {
  Lock lock(mutex_);
  isScheduled_ = false;
  if (!isRunning_) run(lock, [] { return false; });
}

void SerialQueue::run(Lock& lock, const std::function<bool()>& isEnough) {
  isRunning_ = true;
  while (!blocks_.empty() && !isEnough()) {
    platform::Block block = std::move(blocks_.front());
    blocks_.pop_front();
    lock.unlock();
    {
      const platform::InsideQueue inside(*this);
      platform::runGuarded(label_.c_str(), block);
      block = nullptr;
    }
    lock.lock();
    if (waiters_ > 0) progressed_.notify_all();
  }
  isRunning_ = false;
  if (blocks_.empty()) return;
  schedule();
  if (waiters_ > 0) progressed_.notify_all();
}

}  // namespace tarni::posix
