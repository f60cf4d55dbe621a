#include "backends/ios/system/MainQueue.h"

#include <dispatch/dispatch.h>

#include "backends/ios/Apple.h"

namespace tarni::ios {

bool MainQueue::isMainThread() const { return [NSThread isMainThread]; }

void MainQueue::wake() noexcept {
  dispatch_async_f(dispatch_get_main_queue(), this,
                   [](void* queue) { static_cast<MainQueue*>(queue)->drain(); });
}

}  // namespace tarni::ios
