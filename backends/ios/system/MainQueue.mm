#include "backends/ios/system/MainQueue.h"

#include <dispatch/dispatch.h>

#include "backends/ios/Apple.h"
#include "backends/ios/system/RunLoopWatch.h"

namespace tarni::ios {

bool MainQueue::isMainThread() const { return [NSThread isMainThread]; }

void MainQueue::wake() noexcept {
  dispatch_async_f(dispatch_get_main_queue(), this, [](void* queue) {
    noteWork(platform::kMainQueueAlone);
    static_cast<MainQueue*>(queue)->drain();
  });
}

}  // namespace tarni::ios
