#include "backends/ios/system/RunLoopWatch.h"

#include <limits>
#include <string_view>
#include <utility>

#include "backends/ios/Apple.h"

namespace tarni::ios {
namespace {

constexpr int kLast = std::numeric_limits<int>::max();

class RunLoopWatch {
 public:
  static RunLoopWatch& shared() {
    static auto* const only = new RunLoopWatch;
    return *only;
  }

  // What the application itself does before the wait (its layout, its drawing) and after it counts
  // as its work.
  void setObserver(platform::RunLoopObserver* observer) {
    observer_ = observer;
    work_ = {};
    if (!observer || std::exchange(isAdded_, true)) return;
    add(kCFRunLoopBeforeWaiting, kLast);
    add(kCFRunLoopAfterWaiting, -kLast);
  }

  void note(std::string_view work) noexcept {
    if (work_.empty() || work_ == platform::kMainQueueAlone) work_ = work;
  }

 private:
  static void add(CFRunLoopActivity activity, long order) {
    const CFRunLoopObserverRef observer =
        CFRunLoopObserverCreate(kCFAllocatorDefault, activity, true, order, tell, nullptr);
    CFRunLoopAddObserver(CFRunLoopGetMain(), observer, kCFRunLoopCommonModes);
    CFRelease(observer);
  }

  static void tell(CFRunLoopObserverRef, CFRunLoopActivity activity, void*) {
    RunLoopWatch& watch = shared();
    if (!watch.observer_) return;
    if (activity == kCFRunLoopAfterWaiting) return watch.observer_->didWake();
    watch.observer_->willWait(std::exchange(watch.work_, {}));
  }

  platform::RunLoopObserver* observer_ = nullptr;
  bool isAdded_ = false;
  std::string_view work_;  // since it woke
};

}  // namespace

void watchMainRunLoop(platform::RunLoopObserver* observer) {
  RunLoopWatch::shared().setObserver(observer);
}

void noteWork(std::string_view work) noexcept { RunLoopWatch::shared().note(work); }

}  // namespace tarni::ios
