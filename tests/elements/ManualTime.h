// ManualTime: delays on the main queue that pass when the test says so. Everything else is the
// platform's own. Main thread.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "backends/posix/Dispatch.h"

namespace tarni::test {

class ManualTime : public posix::Dispatch {
 public:
  using posix::Dispatch::Dispatch;

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

  void afterOnMain(double seconds, platform::Block block) override {
    delayed_.push_back({now_ + seconds, std::move(block)});
  }

 private:
  struct Delayed {
    double due;
    platform::Block block;
  };

  double now_ = 0;
  std::vector<Delayed> delayed_;
};

}  // namespace tarni::test
