#include "backends/posix/ConcurrentQueue.h"

#include "platform/Foundation/Guarded.h"

namespace tarni::posix {

void ConcurrentQueue::async(platform::Block block) {
  pool_.post([this, block = std::move(block)] { sync(block); });
}

void ConcurrentQueue::asyncAfter(double seconds, platform::Block block) {
  pool_.postAfter(seconds, [this, block = std::move(block)] { sync(block); });
}

void ConcurrentQueue::sync(const platform::Block& block) {
  const platform::InsideQueue inside(*this);
  platform::runGuarded(label_.c_str(), block);
}

}  // namespace tarni::posix
