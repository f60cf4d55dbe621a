// libdispatch on the queues, timers and descriptor events of backends/posix. Like the real one it
// ends the process where it is misused.
#include <dispatch/dispatch.h>
#include <fcntl.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <utility>

#include "backends/posix/Dispatch.h"
#include "tests/darwin/MainQueue.h"

namespace {

using namespace tarni;

// Delays on the main queue are none of this class's business here.
struct NoMainQueue : platform::MainQueue {
  bool isMainThread() const override { return false; }
  void asyncTask(std::function<platform::Task<void>()>) override {}
  bool syncTask(std::function<platform::Task<void>()>) override { return false; }
};

posix::Dispatch& system() {
  static auto* const dispatch = new posix::Dispatch(*new NoMainQueue);
  return *dispatch;
}

[[noreturn]] void crash(const char* misuse) {
  std::fprintf(stderr, "BUG IN CLIENT OF LIBDISPATCH: %s\n", misuse);
  std::abort();
}

struct Object {
  constexpr Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;
  virtual void release() = 0;
};

}  // namespace

struct dispatch_source_type_s {
  bool isTimer, reads;
};
const dispatch_source_type_s _dispatch_source_type_read{false, true};
const dispatch_source_type_s _dispatch_source_type_write{false, false};
const dispatch_source_type_s _dispatch_source_type_timer{true, false};

struct dispatch_queue_s : Object {
  constexpr dispatch_queue_s() = default;
  explicit dispatch_queue_s(std::shared_ptr<platform::DispatchQueue> made)
      : queue(std::move(made)) {}
  // The main queue and the global ones stay.
  void release() override {
    if (queue && !queue->isConcurrent()) delete this;
  }

  std::shared_ptr<platform::DispatchQueue> queue;  // null for the main queue
};
constinit dispatch_queue_s _dispatch_main_q;

struct dispatch_source_s : Object, std::enable_shared_from_this<dispatch_source_s> {
  void release() override {
    if (suspensions > 0) crash("Release of a suspended object");
    owner.reset();
  }

  void resume() {
    const std::lock_guard lock(mutex);
    if (suspensions == 0) crash("Over-resume of an object");
    if (--suspensions == 0) goOn();
  }

  void suspend() {
    const std::lock_guard lock(mutex);
    ++suspensions;
  }

  void cancel() {
    const std::lock_guard lock(mutex);
    if (std::exchange(isCancelled, true) || suspensions > 0) return;
    goOn();
  }

  std::shared_ptr<dispatch_source_s> owner;
  dispatch_source_type_t type = nullptr;
  int descriptor = -1;
  std::shared_ptr<platform::DispatchQueue> queue;
  void* context = nullptr;
  dispatch_function_t handleEvent = nullptr;
  dispatch_function_t handleCancel = nullptr;
  double seconds = 0;

 private:
  // With the lock held, and not suspended.
  void goOn() {
    if (isCancelled) {
      queue->async([self = shared_from_this()] { self->finish(); });
    } else if (type->isTimer) {
      timer_ = system().makeTimer(seconds, queue, [self = shared_from_this()] { self->fire(); });
    } else {
      watch();
    }
  }

  // The handler may have resumed it already.
  void watch() {
    if (std::exchange(isWatching_, true)) return;
    if (!source_) {
      platform::Block fires = [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->fire();
      };
      source_ = type->reads ? system().makeReadSource(descriptor, queue, std::move(fires))
                            : system().makeWriteSource(descriptor, queue, std::move(fires));
    }
    source_->resume();
  }

  void fire() {
    {
      const std::lock_guard lock(mutex);
      isWatching_ = false;
      if (isCancelled || suspensions > 0) return;
    }
    handleEvent(context);
    const std::lock_guard lock(mutex);
    if (!isCancelled && suspensions == 0 && !type->isTimer) watch();
  }

  void finish() {
    if (std::exchange(isFinished, true)) return;
    if (!type->isTimer && fcntl(descriptor, F_GETFD) < 0) crash("Unexpected EV_VANISHED");
    source_.reset();
    timer_.reset();
    handleCancel(context);
  }

  std::mutex mutex;
  int suspensions = 1;
  bool isCancelled = false;
  bool isFinished = false;
  bool isWatching_ = false;
  std::unique_ptr<platform::DispatchSource> source_;
  std::unique_ptr<platform::DispatchTimer> timer_;
};

dispatch_queue_t dispatch_get_global_queue(intptr_t, uintptr_t) {
  // The queue is the system's: nobody owns it.
  static auto* const queue = new dispatch_queue_s(
      std::shared_ptr<platform::DispatchQueue>(&system().backgroundQueue(), [](auto*) {}));
  return queue;
}

dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t) {
  return new dispatch_queue_s(system().makeSerialQueue(label));
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
  if (!queue->queue) {
    runOnMainRunLoop(context, work);
  } else {
    queue->queue->async([context, work] { work(context); });
  }
}

void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
  if (!queue->queue) crash("dispatch_sync on the main queue");
  if (!queue->queue->isConcurrent() && queue->queue->isCurrent()) {
    crash("dispatch_sync called on queue already owned by current thread");
  }
  queue->queue->sync([context, work] { work(context); });
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work) {
  // A delay of the background queue would keep one of its threads.
  static const auto& delays = *new auto(system().makeSerialQueue("delays"));
  const double seconds = static_cast<double>(when) / NSEC_PER_SEC;
  system().after(seconds, *delays, [=] { dispatch_async_f(queue, context, work); });
}

// A moment is told by what is left until it: none is kept.
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds) {
  return when + static_cast<dispatch_time_t>(nanoseconds);
}

dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t,
                                         dispatch_queue_t queue) {
  const auto source = std::make_shared<dispatch_source_s>();
  source->owner = source;
  source->type = type;
  source->descriptor = static_cast<int>(handle);
  source->queue = queue->queue;
  return source.get();
}

void dispatch_set_context(dispatch_object_t object, void* context) {
  static_cast<dispatch_source_t>(object)->context = context;
}

void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler) {
  source->handleEvent = handler;
}

void dispatch_source_set_cancel_handler_f(dispatch_source_t source, dispatch_function_t handler) {
  source->handleCancel = handler;
}

void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t,
                               uint64_t) {
  source->seconds = static_cast<double>(start) / NSEC_PER_SEC;
}

void dispatch_source_cancel(dispatch_source_t source) {
  source->cancel();
}

void dispatch_resume(dispatch_object_t object) {
  static_cast<dispatch_source_t>(object)->resume();
}

void dispatch_suspend(dispatch_object_t object) {
  static_cast<dispatch_source_t>(object)->suspend();
}

void dispatch_release(dispatch_object_t object) {
  static_cast<Object*>(object)->release();
}
