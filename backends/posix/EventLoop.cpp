#include "backends/posix/EventLoop.h"

#define ASIO_STANDALONE
#ifdef __SANITIZE_THREAD__
// The thread sanitizer knows no fences; locks order what handlers see without them.
#define ASIO_DISABLE_FENCED_BLOCK
#endif
#include <algorithm>
#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <map>
#include <mutex>
#include <utility>

#include "backends/posix/Thread.h"
#include "platform/Foundation/Guarded.h"

namespace tarni::posix {
namespace {

constexpr double kLongestDelay = 1e9;

std::chrono::steady_clock::duration delay(double seconds) {
  const double bounded = seconds > 0 ? std::min(seconds, kLongestDelay) : 0;  // not-a-number is 0
  return std::chrono::duration_cast<std::chrono::steady_clock::duration>(
      std::chrono::duration<double>(bounded));
}

// A descriptor is registered once, however many sources watch it.
struct WatchedDescriptor {
  explicit WatchedDescriptor(asio::io_context& context, int descriptor)
      : handle(context, descriptor) {}
  ~WatchedDescriptor() { handle.release(); }
  WatchedDescriptor(const WatchedDescriptor&) = delete;
  WatchedDescriptor& operator=(const WatchedDescriptor&) = delete;

  asio::posix::stream_descriptor handle;
  int sources = 0;
};

}  // namespace

struct EventLoop::Reactor {
  asio::io_context context;
  asio::executor_work_guard<asio::io_context::executor_type> keepsRunning{context.get_executor()};
  std::mutex mutex;
  std::map<int, WatchedDescriptor> descriptors;

  [[noreturn]] void run() {
    for (;;) platform::runGuarded("event loop", [this] { context.run(); });
  }
};

class EventLoop::Source : public platform::DispatchSource {
 public:
  Source(Reactor& reactor, int descriptor, Readiness readiness, platform::Block block)
      : reactor_(reactor),
        descriptor_(descriptor),
        waitType_(readiness == Readiness::Read ? asio::posix::descriptor_base::wait_read
                                               : asio::posix::descriptor_base::wait_write),
        block_(std::make_shared<const platform::Block>(std::move(block))) {
    const std::lock_guard lock(reactor_.mutex);
    const auto [entry, isNew] =
        reactor_.descriptors.try_emplace(descriptor_, reactor_.context, descriptor_);
    ++entry->second.sources;
  }

  ~Source() override {
    const std::lock_guard lock(reactor_.mutex);
    const auto entry = reactor_.descriptors.find(descriptor_);
    if (--entry->second.sources == 0) reactor_.descriptors.erase(entry);
  }

  void resume() override {
    const std::lock_guard lock(reactor_.mutex);
    reactor_.descriptors.at(descriptor_)
        .handle.async_wait(waitType_, [weakBlock = std::weak_ptr(block_)](asio::error_code error) {
          const auto block = weakBlock.lock();
          if (block && error != asio::error::operation_aborted) (*block)();
        });
  }

 private:
  Reactor& reactor_;
  const int descriptor_;
  const asio::posix::descriptor_base::wait_type waitType_;
  const std::shared_ptr<const platform::Block> block_;  // gone with the source
};

class EventLoop::Timer : public platform::DispatchTimer {
 public:
  explicit Timer(std::shared_ptr<asio::steady_timer> timer) : timer_(std::move(timer)) {}
  ~Timer() override { timer_->cancel(); }

 private:
  std::shared_ptr<asio::steady_timer> timer_;
};

namespace {

std::shared_ptr<asio::steady_timer> start(asio::io_context& context, double seconds,
                                          platform::Block block) {
  auto timer = std::make_shared<asio::steady_timer>(context, delay(seconds));
  timer->async_wait([timer, block = std::move(block)](asio::error_code error) {
    if (!error) block();
  });
  return timer;
}

}  // namespace

EventLoop::EventLoop() : reactor_(*new Reactor) {
  startThread("tarni-io", 0, [&reactor = reactor_] { reactor.run(); });
}

void EventLoop::after(double seconds, platform::Block block) {
  start(reactor_.context, seconds, std::move(block));
}

std::unique_ptr<platform::DispatchTimer> EventLoop::startTimer(double seconds,
                                                               platform::Block block) {
  return std::make_unique<Timer>(start(reactor_.context, seconds, std::move(block)));
}

std::unique_ptr<platform::DispatchSource> EventLoop::watch(int descriptor, Readiness readiness,
                                                           platform::Block block) {
  return std::make_unique<Source>(reactor_, descriptor, readiness, std::move(block));
}

}  // namespace tarni::posix
