#include "backends/headless/RunLoop.h"

#include <algorithm>
#include <chrono>

#include "platform/Foundation/Guarded.h"

namespace tarni::headless {

void RunLoop::post(platform::Block block) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(block));
  }
  woken_.notify_one();
}

RunLoop::TimerId RunLoop::after(double seconds, platform::Block block) {
  timers_.emplace(++lastTimer_, Timer{now() + seconds, std::move(block)});
  return lastTimer_;
}

void RunLoop::run() {
  runUntil([] { return false; });
}

void RunLoop::stop() {
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
  }
  woken_.notify_one();
}

bool RunLoop::runUntil(const std::function<bool()>& done, double seconds) {
  const double deadline = now() + seconds;
  ++workCount_;
  if (depth_++ > 0 && nestedLoop_) nestedLoop_();
  bool isDone = done();
  while (!isDone && !isStopped() && now() < deadline) {
    if (!serve()) sleepAndTell(std::min(deadline, nextTimer()));
    isDone = done();
  }
  const std::lock_guard lock(mutex_);
  if (--depth_ == 0) stopped_ = false;
  return isDone;
}

bool RunLoop::pump() {
  ++workCount_;
  return serve();
}

bool RunLoop::serve() {
  const bool hadTimers = serveTimers();
  const bool hadPosted = servePosted();
  const bool hadItems = serveMainQueue();
  return hadTimers || hadPosted || hadItems;
}

void RunLoop::wait(double seconds) {
  const double deadline = now() + seconds;
  ++workCount_;
  do {
    const double next = std::min(deadline, nextTimer());
    if (clock_.isVirtual()) {
      clock_.skip(std::max(0.0, next - now()));
    } else {
      sleepAndTell(next);
    }
    serveTimers();
    servePosted();
  } while (now() < deadline);
}

void RunLoop::wake() noexcept {
  {
    const std::lock_guard lock(mutex_);
    mainQueueWaits_ = true;
  }
  woken_.notify_one();
}

bool RunLoop::isStopped() {
  const std::lock_guard lock(mutex_);
  return stopped_;
}

// Those due at the time of the call, the earliest first.
bool RunLoop::serveTimers() {
  const double time = now();
  bool served = false;
  while (!timers_.empty()) {
    const auto earliest =
        std::ranges::min_element(timers_, {}, [](const auto& entry) { return entry.second.due; });
    if (earliest->second.due > time) break;
    const platform::Block block = std::move(earliest->second.block);
    timers_.erase(earliest);
    note("timer");
    platform::runGuarded("run loop", block);
    served = true;
  }
  return served;
}

// Those posted up to the time of the call; what a nested loop has served meanwhile is not missed.
bool RunLoop::servePosted() {
  std::size_t left = 0;
  {
    const std::lock_guard lock(mutex_);
    left = posted_.size();
  }
  const bool served = left > 0;
  for (; left > 0; --left) {
    platform::Block block;
    {
      const std::lock_guard lock(mutex_);
      if (posted_.empty()) break;
      block = std::move(posted_.front());
      posted_.pop_front();
    }
    note("posted block");
    platform::runGuarded("run loop", block);
  }
  return served;
}

bool RunLoop::serveMainQueue() {
  {
    const std::lock_guard lock(mutex_);
    if (!std::exchange(mainQueueWaits_, false)) return false;
  }
  if (beganWith_.empty()) beganWith_ = platform::kMainQueueAlone;
  ++workCount_;
  drain();
  return true;
}

void RunLoop::note(std::string_view served) {
  ++workCount_;
  if (beganWith_.empty() || beganWith_ == platform::kMainQueueAlone) beganWith_ = served;
}

void RunLoop::sleepAndTell(double deadline) {
  if (observer_) observer_->willWait(beganWith_);
  beganWith_ = {};
  sleepUntil(deadline);
  if (observer_) observer_->didWake();
}

void RunLoop::sleepUntil(double deadline) {
  std::unique_lock lock(mutex_);
  const auto isDue = [this] { return !posted_.empty() || mainQueueWaits_ || stopped_; };
  const double seconds = deadline - now();
  if (seconds == std::numeric_limits<double>::infinity()) {
    woken_.wait(lock, isDue);
  } else {
    woken_.wait_for(lock, std::chrono::duration<double>(seconds), isDue);
  }
}

double RunLoop::nextTimer() const {
  double next = std::numeric_limits<double>::infinity();
  for (const auto& [id, timer] : timers_) next = std::min(next, timer.due);
  return next;
}

}  // namespace tarni::headless
