// SerialMainQueue: the application's main queue on top of whatever event loop the backend has.
//
// A backend derives from it, says which thread is the main one and how to wake it, and calls
// `drain` from its event loop after every wake. Nothing is ever run from inside the call that
// appended it, nor from inside the resumption that ended the item before: the next item always
// starts from a fresh call of `drain`.
#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <mutex>

#include "platform/Dispatch/Dispatch.h"

namespace tarni::platform {

class SerialMainQueue : public MainQueue {
 public:
  // Any thread. After `close` the item is dropped.
  void asyncTask(std::function<Task<void>()> work) override;
  // Any thread but the main one, where it logs and answers false without having run the item. An
  // exception that leaves the item is logged; the answer is true all the same.
  bool syncTask(std::function<Task<void>()> work) override;

  // Main thread. Starts the items that wait at the time of the call, one after the other, until
  // one suspends; returns at once while an item is active (so also inside a nested event loop).
  // Never throws.
  void drain() noexcept;

  // Main thread; the event loop ends. Items that have not started are dropped and whoever waits
  // for one is answered false. An item that is suspended stays so, and keeps its waiter.
  void close() noexcept;

 protected:
  // Any thread, called without a lock held: makes the main thread call `drain` soon. Must not call
  // `drain` itself, must not wait, and must not throw. It is not called again before `drain` is:
  // a backend whose event loop starts later, or loses what was posted to it, calls `drain` then.
  virtual void wake() noexcept = 0;

 private:
  struct Item {
    std::function<Task<void>()> work;
    std::shared_ptr<std::promise<bool>> waiter;  // null when nobody waits
  };

  bool append(Item item);
  void start();
  void ended(const std::exception_ptr& failure) noexcept;
  void wakeForNext();

  std::mutex mutex_;
  std::deque<Item> items_;
  Item active_;  // kept for as long as its task runs, which may use what it captured
  bool isActive_ = false;
  bool isDraining_ = false;
  bool isWoken_ = false;
  bool isClosed_ = false;
};

}  // namespace tarni::platform
