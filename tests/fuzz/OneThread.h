// OneThread: ManualTime with queues, timers and sockets served on the caller's thread as well, so
// that an input is over when the caller has turned often enough.
#pragma once

#include <poll.h>

#include <deque>
#include <set>

#include "tests/elements/ManualTime.h"

namespace tarni::test {

class OneThread : public ManualTime {
 public:
  using ManualTime::ManualTime;

  // Runs what is due on queues and at sockets; false when there is nothing.
  bool turn() {
    for (Source* const source : sources_) source->look();
    if (blocks_.empty()) return false;
    const platform::Block block = std::move(blocks_.front());
    blocks_.pop_front();
    block();
    return true;
  }

  std::shared_ptr<platform::DispatchQueue> makeSerialQueue(std::string label) override {
    return std::make_shared<Queue>(*this, std::move(label));
  }
  std::unique_ptr<platform::DispatchSource> makeReadSource(
      int descriptor, std::shared_ptr<platform::DispatchQueue> /*queue*/,
      platform::Block handler) override {
    return std::make_unique<Source>(*this, pollfd{descriptor, POLLIN, 0}, std::move(handler));
  }
  std::unique_ptr<platform::DispatchSource> makeWriteSource(
      int descriptor, std::shared_ptr<platform::DispatchQueue> /*queue*/,
      platform::Block handler) override {
    return std::make_unique<Source>(*this, pollfd{descriptor, POLLOUT, 0}, std::move(handler));
  }
  std::unique_ptr<platform::DispatchTimer> makeTimer(
      double seconds, std::shared_ptr<platform::DispatchQueue> /*queue*/,
      platform::Block handler) override {
    auto timer = std::make_unique<Timer>();
    *timer->handler = std::move(handler);
    afterOnMain(seconds, guarded(timer->handler));
    return timer;
  }

 private:
  using Handler = std::shared_ptr<platform::Block>;

  // Does nothing once the owner has gone.
  static platform::Block guarded(const Handler& handler) {
    return [weak = std::weak_ptr(handler)] {
      if (const Handler alive = weak.lock()) (*alive)();
    };
  }

  struct Timer : platform::DispatchTimer {
    Handler handler = std::make_shared<platform::Block>();
  };

  // All queues are one: what is serial in each is serial in all.
  class Queue : public platform::DispatchQueue {
   public:
    Queue(OneThread& owner, std::string label) : owner_(owner), label_(std::move(label)) {}
    const std::string& label() const override { return label_; }
    bool isConcurrent() const override { return false; }
    bool isCurrent() const override { return false; }
    void async(platform::Block block) override { owner_.blocks_.push_back(std::move(block)); }
    void sync(const platform::Block& block) override { block(); }

   private:
    OneThread& owner_;
    const std::string label_;
  };

  class Source : public platform::DispatchSource {
   public:
    Source(OneThread& owner, pollfd watched, platform::Block handler)
        : owner_(owner),
          watched_(watched),
          handler_(std::make_shared<platform::Block>(std::move(handler))) {
      owner_.sources_.insert(this);
    }
    ~Source() override { owner_.sources_.erase(this); }
    void resume() override { isAwaited_ = true; }
    void look() {
      if (!isAwaited_ || poll(&watched_, 1, 0) <= 0) return;
      isAwaited_ = false;
      owner_.blocks_.push_back(guarded(handler_));
    }

   private:
    OneThread& owner_;
    pollfd watched_;
    const Handler handler_;
    bool isAwaited_ = false;
  };

  std::deque<platform::Block> blocks_;
  std::set<Source*> sources_;
};

}  // namespace tarni::test
