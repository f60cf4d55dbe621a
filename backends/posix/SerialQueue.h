// SerialQueue: blocks one at a time and in order, on the threads of a pool, or on the thread of
// whoever waits for one (`sync`). Since a waiting thread works off what stands before its own
// block, a chain of queues that wait for each other needs no further thread to make progress.
#pragma once

#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>

#include "backends/posix/WorkerPool.h"
#include "platform/Dispatch/Dispatch.h"

namespace tarni::posix {

class SerialQueue : public platform::DispatchQueue,
                    public std::enable_shared_from_this<SerialQueue> {
 public:
  SerialQueue(std::string label, WorkerPool& pool) : label_(std::move(label)), pool_(pool) {}

  const std::string& label() const override { return label_; }
  bool isConcurrent() const override { return false; }
  bool isCurrent() const override;
  void async(platform::Block block) override;
  void runNowOrAsync(platform::Block block) override;
  void sync(const platform::Block& block) override;

 private:
  using Lock = std::unique_lock<std::mutex>;

  void schedule();
  void runScheduled();
  // Runs blocks, without the lock, until there are none or `isEnough`.
  void run(Lock& lock, const std::function<bool()>& isEnough);

  const std::string label_;
  WorkerPool& pool_;
  std::mutex mutex_;
  std::condition_variable progressed_;
  std::list<platform::Block> blocks_;  // without memory while it is empty, as most of them are
  bool isRunning_ = false;
  bool isScheduled_ = false;
  int waiters_ = 0;
};

}  // namespace tarni::posix
