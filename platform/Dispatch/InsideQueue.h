// Which queues' blocks the calling thread is inside of.
#pragma once

#include "platform/Dispatch/Dispatch.h"

namespace tarni::platform {

// Marks the calling thread as being inside `queue` for the life of the object.
class InsideQueue {
 public:
  explicit InsideQueue(const DispatchQueue& queue) noexcept : queue_(&queue), outer_(innermost) {
    innermost = this;
  }
  ~InsideQueue() { innermost = outer_; }
  InsideQueue(const InsideQueue&) = delete;
  InsideQueue& operator=(const InsideQueue&) = delete;

  static bool isInside(const DispatchQueue& queue) noexcept {
    for (const InsideQueue* inside = innermost; inside; inside = inside->outer_) {
      if (inside->queue_ == &queue) return true;
    }
    return false;
  }

 private:
  inline static thread_local const InsideQueue* innermost = nullptr;

  const DispatchQueue* queue_;
  const InsideQueue* outer_;
};

}  // namespace tarni::platform
