#include "backends/ios/system/Source.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <system_error>
#include <utility>

namespace tarni::ios {

struct Source::Handler {
  Handler(dispatch_source_type_t type, int watched, std::shared_ptr<Queue> itsQueue,
          platform::Block itsBlock)
      : queue(std::move(itsQueue)),
        block(std::move(itsBlock)),
        descriptor(watched),
        source(dispatch_source_create(type, watched < 0 ? 0 : static_cast<uintptr_t>(watched), 0,
                                      queue->native())) {
    dispatch_set_context(source, this);
    dispatch_source_set_event_handler_f(source, handleEvent);
    dispatch_source_set_cancel_handler_f(source, handleCancel);
  }
  ~Handler() {
    if (descriptor >= 0) close(descriptor);
  }
  Handler(const Handler&) = delete;
  Handler& operator=(const Handler&) = delete;

  const std::shared_ptr<Queue> queue;
  const platform::Block block;
  const int descriptor;  // negative for none
  const dispatch_source_t source;
  std::mutex mutex;
  int allowedEvents = 0;  // none while the source is suspended
  bool isCancelled = false;
};

Source Source::watching(dispatch_source_type_t type, int descriptor, std::shared_ptr<Queue> queue,
                        platform::Block block) {
  const int copy = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  if (copy < 0) throw std::system_error(errno, std::generic_category(), "watching a descriptor");
  return Source(new Handler(type, copy, std::move(queue), std::move(block)));
}

Source Source::reading(int descriptor, std::shared_ptr<Queue> queue, platform::Block block) {
  return watching(DISPATCH_SOURCE_TYPE_READ, descriptor, std::move(queue), std::move(block));
}

Source Source::writing(int descriptor, std::shared_ptr<Queue> queue, platform::Block block) {
  return watching(DISPATCH_SOURCE_TYPE_WRITE, descriptor, std::move(queue), std::move(block));
}

Source Source::timer(double seconds, std::shared_ptr<Queue> queue, platform::Block block) {
  Source timer(new Handler(DISPATCH_SOURCE_TYPE_TIMER, -1, std::move(queue), std::move(block)));
  dispatch_source_set_timer(timer.handler_->source, timeIn(seconds), DISPATCH_TIME_FOREVER, 0);
  timer.resume();
  return timer;
}

// A suspended source is never cancelled to its end, and must not be released.
Source::~Source() {
  if (!handler_) return;
  const dispatch_source_t source = handler_->source;
  bool isSuspended = false;
  {
    const std::lock_guard lock(handler_->mutex);
    handler_->isCancelled = true;
    isSuspended = handler_->allowedEvents == 0;
  }
  dispatch_source_cancel(source);
  if (isSuspended) dispatch_resume(source);
  dispatch_release(source);
}

void Source::resume() {
  const std::lock_guard lock(handler_->mutex);
  if (handler_->allowedEvents++ == 0) dispatch_resume(handler_->source);
}

void Source::handleEvent(void* context) {
  auto& handler = *static_cast<Handler*>(context);
  {
    const std::lock_guard lock(handler.mutex);
    if (handler.isCancelled) return;
    if (--handler.allowedEvents == 0) dispatch_suspend(handler.source);
  }
  handler.queue->run(handler.block);
}

// What the block holds may wait for the queue as it goes.
void Source::handleCancel(void* context) {
  auto* const handler = static_cast<Handler*>(context);
  const std::shared_ptr<Queue> queue = handler->queue;
  queue->run([&] { delete handler; });
}

}  // namespace tarni::ios
