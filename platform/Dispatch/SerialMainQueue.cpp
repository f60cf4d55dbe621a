#include "platform/Dispatch/SerialMainQueue.h"

#include <utility>

#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::platform {

void SerialMainQueue::asyncTask(std::function<Task<void>()> work) {
  append({std::move(work), nullptr});
}

bool SerialMainQueue::syncTask(std::function<Task<void>()> work) {
  if (isMainThread()) {
    NSLog("The main thread cannot wait for its own queue");
    return false;
  }
  const auto waiter = std::make_shared<std::promise<bool>>();
  std::future<bool> wasRun = waiter->get_future();
  return append({std::move(work), waiter}) && wasRun.get();
}

bool SerialMainQueue::append(Item item) {
  {
    const std::lock_guard lock(mutex_);
    if (isClosed_) return false;
    items_.push_back(std::move(item));
  }
  wakeForNext();
  return true;
}

void SerialMainQueue::drain() noexcept {
  std::size_t waiting = 0;
  {
    const std::lock_guard lock(mutex_);
    isWoken_ = false;
    if (isActive_ || isDraining_) return;
    isDraining_ = true;
    waiting = items_.size();
  }
  bool hasMore = waiting > 0;
  while (hasMore) {
    start();
    const std::lock_guard lock(mutex_);
    // Items appended meanwhile wait for the next call, so that the event loop gets its turn.
    hasMore = --waiting > 0 && !isActive_ && !items_.empty();
  }
  {
    const std::lock_guard lock(mutex_);
    isDraining_ = false;
  }
  wakeForNext();
}

void SerialMainQueue::start() {
  {
    const std::lock_guard lock(mutex_);
    active_ = std::move(items_.front());
    items_.pop_front();
    isActive_ = true;
  }
  try {
    spawn(active_.work(), [this](const std::exception_ptr& failure) { ended(failure); });
  } catch (...) {
    ended(std::current_exception());
  }
}

void SerialMainQueue::ended(const std::exception_ptr& failure) noexcept {
  logFailure("main queue", failure);
  std::shared_ptr<std::promise<bool>> waiter = std::move(active_.waiter);
  active_ = {};
  if (waiter) waiter->set_value(true);
  {
    const std::lock_guard lock(mutex_);
    isActive_ = false;
  }
  wakeForNext();
}

void SerialMainQueue::wakeForNext() {
  {
    const std::lock_guard lock(mutex_);
    if (items_.empty() || isActive_ || isDraining_ || isWoken_) return;
    isWoken_ = true;
  }
  wake();
}

void SerialMainQueue::close() noexcept {
  std::deque<Item> dropped;
  {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    dropped.swap(items_);
  }
  for (Item& item : dropped) {
    item.work = nullptr;
    if (item.waiter) item.waiter->set_value(false);
  }
}

}  // namespace tarni::platform
