#include "backends/ios/system/Queue.h"

#include <algorithm>
#include <utility>

#include "platform/Foundation/Guarded.h"

namespace tarni::ios {
namespace {

constexpr double kLongestDelay = 1e9;

// A block on its way, with the queue that it goes to.
struct Item {
  std::shared_ptr<const Queue> queue;
  platform::Block block;
};

// What the block holds goes on the queue, too: it may wait for the queue as it goes.
void runItem(void* context) {
  const std::unique_ptr<Item> item(static_cast<Item*>(context));
  item->queue->run([&] {
    const platform::Block block = std::exchange(item->block, nullptr);
    block();
  });
}

struct Waiting {
  const Queue& queue;
  const platform::Block& block;
};

void runWaiting(void* context) {
  const auto& waiting = *static_cast<const Waiting*>(context);
  waiting.queue.run(waiting.block);
}

}  // namespace

void Queue::run(const platform::Block& block) const noexcept {
  const platform::InsideQueue inside(*this);
  platform::runGuarded(label_.c_str(), block);
}

void Queue::async(platform::Block block) {
  dispatch_async_f(queue_, new Item{shared_from_this(), std::move(block)}, runItem);
}

void Queue::sync(const platform::Block& block) {
  Waiting waiting{*this, block};
  if (isCurrent()) {
    runWaiting(&waiting);
  } else {
    dispatch_sync_f(queue_, &waiting, runWaiting);
  }
}

void Queue::after(double seconds, platform::Block block) {
  dispatch_after_f(timeIn(seconds), queue_, new Item{shared_from_this(), std::move(block)},
                   runItem);
}

dispatch_time_t timeIn(double seconds) {
  const double bounded = seconds > 0 ? std::min(seconds, kLongestDelay) : 0;
  return dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(bounded * NSEC_PER_SEC));
}

}  // namespace tarni::ios
