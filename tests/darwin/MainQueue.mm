#include "tests/darwin/MainQueue.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>
#include <deque>
#include <mutex>
#include <utility>

#import <Foundation/Foundation.h>

namespace {

struct Item {
  void* context;
  void (*work)(void*);
};

// Never destroyed: other threads append until the process is gone. They send no message of
// Objective-C, whose classes here must not be met by two threads for the first time.
struct MainQueue {
  std::mutex mutex;
  std::deque<Item> items;
  const int woken = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  bool isServing = false;  // main thread
};

MainQueue& queue() {
  static auto* const shared = new MainQueue;
  return *shared;
}

bool takeNext(Item& item) {
  const std::lock_guard lock(queue().mutex);
  if (queue().items.empty()) return false;
  item = queue().items.front();
  queue().items.pop_front();
  return true;
}

void serve() {
  if (std::exchange(queue().isServing, true)) return;
  for (Item item; takeNext(item);) {
    @autoreleasepool {
      item.work(item.context);
    }
  }
  queue().isServing = false;
}

}  // namespace

@interface TarniMainQueue : NSObject <RunLoopEvents>
@end

@implementation TarniMainQueue

// Libraries are loaded on the main thread.
+ (void)load {
  @autoreleasepool {
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    [[NSRunLoop currentRunLoop] addEvent:reinterpret_cast<void*>(intptr_t{queue().woken})
                                    type:ET_RDESC
                                 watcher:static_cast<id<RunLoopEvents>>([self new])
                                 forMode:NSDefaultRunLoopMode];
  }
}

- (void)receivedEvent:(void*)data
                 type:(RunLoopEventType)type
                extra:(void*)extra
              forMode:(NSString*)mode {
  (void)data, (void)type, (void)extra, (void)mode;
  std::uint64_t count = 0;
  if (read(queue().woken, &count, sizeof count) == sizeof count) serve();
}

@end

void runOnMainRunLoop(void* context, void (*work)(void*)) {
  {
    const std::lock_guard lock(queue().mutex);
    queue().items.push_back({context, work});
  }
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(queue().woken, &one, sizeof one);
}
