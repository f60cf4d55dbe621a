// ConcurrentQueue: blocks side by side on the threads of a pool.
#pragma once

#include <string>
#include <utility>

#include "backends/posix/WorkerPool.h"
#include "platform/Dispatch/Dispatch.h"
#include "platform/Dispatch/InsideQueue.h"

namespace tarni::posix {

class ConcurrentQueue : public platform::DispatchQueue {
 public:
  ConcurrentQueue(std::string label, WorkerPool& pool) : label_(std::move(label)), pool_(pool) {}

  const std::string& label() const override { return label_; }
  bool isConcurrent() const override { return true; }
  bool isCurrent() const override { return platform::InsideQueue::isInside(*this); }
  void async(platform::Block block) override;
  void asyncAfter(double seconds, platform::Block block);
  // Runs the block on the calling thread.
  void sync(const platform::Block& block) override;

 private:
  const std::string label_;
  WorkerPool& pool_;
};

}  // namespace tarni::posix
