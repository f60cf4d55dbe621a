// ManualTime: delays on the main queue that pass when the test says so. Everything else is the
// platform's own. Main thread.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Dispatch/Dispatch.h"

namespace tarni::test {

class ManualTime : public platform::Dispatch {
 public:
  explicit ManualTime(platform::Dispatch& real) : real_(real) {}

  // Runs what is due within `seconds`, the earliest first.
  void pass(double seconds) {
    now_ += seconds;
    const auto byDue = [](const Delayed& a, const Delayed& b) { return a.due < b.due; };
    for (auto next = std::ranges::min_element(delayed_, byDue);
         next != delayed_.end() && next->due <= now_;
         next = std::ranges::min_element(delayed_, byDue)) {
      const platform::Block block = std::move(next->block);
      delayed_.erase(next);
      block();
    }
  }

  platform::MainQueue& mainQueue() override { return real_.mainQueue(); }
  platform::DispatchQueue& backgroundQueue() override { return real_.backgroundQueue(); }
  std::shared_ptr<platform::DispatchQueue> makeSerialQueue(std::string label) override {
    return real_.makeSerialQueue(std::move(label));
  }
  void after(double seconds, platform::DispatchQueue& queue, platform::Block block) override {
    real_.after(seconds, queue, std::move(block));
  }
  void afterOnMain(double seconds, platform::Block block) override {
    delayed_.push_back({now_ + seconds, std::move(block)});
  }
  std::unique_ptr<platform::DispatchSource> makeReadSource(
      int descriptor, std::shared_ptr<platform::DispatchQueue> queue,
      platform::Block handler) override {
    return real_.makeReadSource(descriptor, std::move(queue), std::move(handler));
  }
  std::unique_ptr<platform::DispatchSource> makeWriteSource(
      int descriptor, std::shared_ptr<platform::DispatchQueue> queue,
      platform::Block handler) override {
    return real_.makeWriteSource(descriptor, std::move(queue), std::move(handler));
  }
  std::unique_ptr<platform::DispatchTimer> makeTimer(double seconds,
                                                     std::shared_ptr<platform::DispatchQueue> queue,
                                                     platform::Block handler) override {
    return real_.makeTimer(seconds, std::move(queue), std::move(handler));
  }

 private:
  struct Delayed {
    double due;
    platform::Block block;
  };

  platform::Dispatch& real_;
  double now_ = 0;
  std::vector<Delayed> delayed_;
};

}  // namespace tarni::test
