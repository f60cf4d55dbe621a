#include "agent/session/calls/Turns.h"

#include <utility>

#include "platform/Platform.h"

namespace tarni::session {

Turns& Turns::sharedInstance() {
  static auto* const shared = new Turns;
  return *shared;
}

void Turns::add(CallRef call) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(call));
    if (std::exchange(isPosted_, true)) return;
  }
  post();
}

void Turns::post() {
  platform::current().dispatch->mainQueue().asyncTask([this] { return next(); });
}

platform::Task<void> Turns::next() {
  CallRef call;
  {
    const std::lock_guard lock(mutex_);
    call = std::move(waiting_.front());
    waiting_.pop_front();
  }
  co_await call->turn();
  {
    const std::lock_guard lock(mutex_);
    isPosted_ = !waiting_.empty();
    if (!isPosted_) co_return;
  }
  post();
}

}  // namespace tarni::session
