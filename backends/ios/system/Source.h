// Source: one source of libdispatch's, suspended until it is allowed an event. Any thread.
#pragma once

#include <dispatch/dispatch.h>

#include <memory>

#include "backends/ios/system/Queue.h"

namespace tarni::ios {

class Source {
 public:
  // Watches a copy of the descriptor: libdispatch ends the process when what it watches is closed,
  // and it stops watching some time after it was told to. Throws std::system_error when there is no
  // room for a copy.
  static Source reading(int descriptor, std::shared_ptr<Queue> queue, platform::Block block);
  static Source writing(int descriptor, std::shared_ptr<Queue> queue, platform::Block block);
  // Runs the block once, in so many seconds.
  static Source timer(double seconds, std::shared_ptr<Queue> queue, platform::Block block);

  Source(Source&& other) noexcept : handler_(std::exchange(other.handler_, nullptr)) {}
  Source& operator=(Source&&) = delete;
  // Cancels: the block does not start afterwards on its queue.
  ~Source();

  // Allows one event more.
  void resume();

 private:
  struct Handler;
  explicit Source(Handler* handler) : handler_(handler) {}

  static Source watching(dispatch_source_type_t type, int descriptor, std::shared_ptr<Queue> queue,
                         platform::Block block);
  static void handleEvent(void* context);
  static void handleCancel(void* context);

  Handler* handler_;  // libdispatch owns it: it goes when the source is cancelled
};

}  // namespace tarni::ios
