#include "agent/session/calls/Waits.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {

using platform::Task;

namespace {

constexpr auto kBetweenLooks = std::chrono::milliseconds(10);

}  // namespace

Waits& Waits::sharedInstance() {
  static auto* const shared = new Waits;
  return *shared;
}

void Waits::start() {
  MainWatch::sharedInstance().setOnRest([this] { somethingHappened(); });
}

Task<bool> Waits::until(CallRef call, std::function<bool()> holds, double timeout) {
  if (holds()) co_return true;
  const auto wait = std::make_shared<Wait>(Wait{call, std::move(holds)});
  co_return co_await parked(wait, timeout);
}

Task<bool> Waits::untilRest(CallRef call, double quiet, double timeout) {
  const auto wait = std::make_shared<Wait>(Wait{call, nullptr});
  lookAtRest(wait, quiet / 1000);
  co_return co_await parked(wait, timeout);
}

Task<bool> Waits::parked(std::shared_ptr<Wait> wait, double timeout) {
  waits_.push_back(wait);
  platform::current().dispatch->afterOnMain(timeout / 1000, [weak = std::weak_ptr(wait)] {
    const auto over = weak.lock();
    if (over && !std::exchange(over->isOver, true)) over->call->resume();
  });
  try {
    co_await wait->call->park();
  } catch (...) {
    wait->failure = std::current_exception();
  }
  wait->isOver = true;
  waits_.remove(wait);
  if (wait->failure) std::rethrow_exception(wait->failure);
  co_return wait->isMet;
}

// Whenever the program may have rested for long enough it is looked at whether it has.
void Waits::lookAtRest(const std::weak_ptr<Wait>& weak, double quietSeconds) {
  const double rested = seconds(Clock::now() - MainWatch::sharedInstance().lastActivity());
  platform::current().dispatch->afterOnMain(
      std::max(quietSeconds - rested, 0.0), [weak, quietSeconds] {
        const auto wait = weak.lock();
        if (!wait || wait->isOver) return;
        if (seconds(Clock::now() - MainWatch::sharedInstance().lastActivity()) < quietSeconds) {
          return lookAtRest(weak, quietSeconds);
        }
        wait->isOver = wait->isMet = true;
        wait->call->resume();
      });
}

void Waits::somethingHappened() {
  if (waits_.empty() || isLooking_) return;
  const auto since = Clock::now() - lastLook_;
  if (since >= kBetweenLooks) {
    look();
  } else if (!std::exchange(isLookPending_, true)) {
    // It only wakes the main thread: the look comes when that has come to rest again.
    platform::current().dispatch->afterOnMain(seconds(kBetweenLooks - since),
                                              [this] { isLookPending_ = false; });
  }
}

// The calls go on here, in no turn: all that they do is to answer.
void Waits::look() {
  isLooking_ = true;
  lastLook_ = Clock::now();
  std::list<std::shared_ptr<Wait>> ended;
  for (const auto& wait : waits_) {
    if (wait->isOver || !wait->holds) continue;
    try {
      wait->isMet = wait->holds();
    } catch (...) {
      wait->failure = std::current_exception();
    }
    if (!wait->isMet && !wait->failure) continue;
    wait->isOver = true;
    ended.push_back(wait);
  }
  for (const auto& wait : ended) wait->call->resume();
  isLooking_ = false;
}

}  // namespace tarni::session
