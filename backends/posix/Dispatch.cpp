#include "backends/posix/Dispatch.h"

#include <atomic>
#include <utility>

#include "backends/posix/ConcurrentQueue.h"
#include "backends/posix/EventLoop.h"
#include "backends/posix/SerialQueue.h"
#include "backends/posix/WorkerPool.h"

namespace tarni::posix {
namespace {

constexpr std::size_t kMaximumSerialThreads = 32;
constexpr std::size_t kMaximumBackgroundThreads = 16;
constexpr int kBackgroundNiceness = 10;

// A handler that its owner can call off, also when it waits on its queue already.
struct Handler {
  Handler(std::shared_ptr<platform::DispatchQueue> handlerQueue, platform::Block handlerBlock)
      : queue(std::move(handlerQueue)), block(std::move(handlerBlock)) {}

  const std::shared_ptr<platform::DispatchQueue> queue;
  const platform::Block block;
  std::atomic<bool> isCancelled = false;
};

platform::Block unlessCancelled(const std::shared_ptr<Handler>& handler) {
  return [handler] {
    if (!handler->isCancelled) handler->block();
  };
}

class QueuedSource : public platform::DispatchSource {
 public:
  QueuedSource(EventLoop& eventLoop, int descriptor, Readiness readiness,
               const std::shared_ptr<Handler>& handler)
      : handler_(handler), source_(eventLoop.watch(descriptor, readiness, deliver(handler))) {}
  ~QueuedSource() override { handler_->isCancelled = true; }

  void resume() override { source_->resume(); }

 private:
  static platform::Block deliver(const std::shared_ptr<Handler>& handler) {
    return [handler] { handler->queue->runNowOrAsync(unlessCancelled(handler)); };
  }

  std::shared_ptr<Handler> handler_;
  std::unique_ptr<platform::DispatchSource> source_;
};

class QueuedTimer : public platform::DispatchTimer {
 public:
  QueuedTimer(EventLoop& eventLoop, double seconds, const std::shared_ptr<Handler>& handler)
      : handler_(handler), timer_(eventLoop.startTimer(seconds, [handler] {
          handler->queue->async(unlessCancelled(handler));
        })) {}
  ~QueuedTimer() override { handler_->isCancelled = true; }

 private:
  std::shared_ptr<Handler> handler_;
  std::unique_ptr<platform::DispatchTimer> timer_;
};

}  // namespace

// What the threads use is never destroyed, for they run on while the process exits.
Dispatch::Dispatch(platform::MainQueue& mainQueue)
    : mainQueue_(mainQueue),
      eventLoop_(*new EventLoop),
      serialPool_(*new WorkerPool("tarni-queue", 0, kMaximumSerialThreads)),
      backgroundQueue_(*new ConcurrentQueue(
          "background",
          *new WorkerPool("tarni-bg", kBackgroundNiceness, kMaximumBackgroundThreads))) {}

Dispatch::~Dispatch() = default;

platform::DispatchQueue& Dispatch::backgroundQueue() {
  return backgroundQueue_;
}

std::shared_ptr<platform::DispatchQueue> Dispatch::makeSerialQueue(std::string label) {
  return std::make_shared<SerialQueue>(std::move(label), serialPool_);
}

// What beats as long as the program lives beats in the background: one thread wakes for it, not
// two.
void Dispatch::after(double seconds, platform::DispatchQueue& queue, platform::Block block) {
  if (&queue == &backgroundQueue_) return backgroundQueue_.asyncAfter(seconds, std::move(block));
  eventLoop_.after(seconds, [&queue, block = std::move(block)] { queue.async(block); });
}

void Dispatch::afterOnMain(double seconds, platform::Block block) {
  eventLoop_.after(seconds, [&main = mainQueue_, block = std::move(block)] { main.async(block); });
}

std::unique_ptr<platform::DispatchSource> Dispatch::makeReadSource(
    int descriptor, std::shared_ptr<platform::DispatchQueue> queue, platform::Block handler) {
  return std::make_unique<QueuedSource>(
      eventLoop_, descriptor, Readiness::Read,
      std::make_shared<Handler>(std::move(queue), std::move(handler)));
}

std::unique_ptr<platform::DispatchSource> Dispatch::makeWriteSource(
    int descriptor, std::shared_ptr<platform::DispatchQueue> queue, platform::Block handler) {
  return std::make_unique<QueuedSource>(
      eventLoop_, descriptor, Readiness::Write,
      std::make_shared<Handler>(std::move(queue), std::move(handler)));
}

std::unique_ptr<platform::DispatchTimer> Dispatch::makeTimer(
    double seconds, std::shared_ptr<platform::DispatchQueue> queue, platform::Block handler) {
  return std::make_unique<QueuedTimer>(
      eventLoop_, seconds, std::make_shared<Handler>(std::move(queue), std::move(handler)));
}

}  // namespace tarni::posix
