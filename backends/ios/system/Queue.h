// Queue: a queue of libdispatch's. Any thread.
#pragma once

#include <dispatch/dispatch.h>

#include <memory>
#include <string>
#include <utility>

#include "platform/Dispatch/Dispatch.h"
#include "platform/Dispatch/InsideQueue.h"

namespace tarni::ios {

class Queue : public platform::DispatchQueue, public std::enable_shared_from_this<Queue> {
 public:
  // Takes over the reference.
  Queue(dispatch_queue_t queue, std::string label, bool isConcurrent)
      : queue_(queue), label_(std::move(label)), isConcurrent_(isConcurrent) {}
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;
  ~Queue() override { dispatch_release(queue_); }

  const std::string& label() const override { return label_; }
  bool isConcurrent() const override { return isConcurrent_; }
  bool isCurrent() const override { return platform::InsideQueue::isInside(*this); }
  void async(platform::Block block) override;
  void sync(const platform::Block& block) override;

  void after(double seconds, platform::Block block);
  // On the queue: runs what libdispatch called back for; what it throws is logged.
  void run(const platform::Block& block) const noexcept;

  dispatch_queue_t native() const { return queue_; }

 private:
  dispatch_queue_t queue_;
  const std::string label_;
  const bool isConcurrent_;
};

// The moment in so many seconds. Negative ones and not-a-number are now.
dispatch_time_t timeIn(double seconds);

}  // namespace tarni::ios
