// ProcessInfo: the clocks, which can be made to skip time instead of waiting for it. Any thread;
// the setters are for start-up and tests.
#pragma once

#include <atomic>

#include "backends/posix/ProcessInfo.h"

namespace tarni::headless {

class ProcessInfo : public posix::ProcessInfo {
 public:
  double systemUptime() const override { return posix::ProcessInfo::systemUptime() + skipped_; }
  double currentMediaTime() const override {
    return posix::ProcessInfo::currentMediaTime() + skipped_;
  }
  std::uint64_t machAbsoluteTime() const override;

  // With a virtual clock the run loop's waits end at once, and the clocks skip the time waited.
  bool isVirtual() const { return virtual_; }
  void setVirtual(bool isVirtual) { virtual_ = isVirtual; }
  void skip(double seconds) { skipped_ = skipped_ + seconds; }

 private:
  std::atomic<double> skipped_ = 0;
  std::atomic<bool> virtual_ = false;
};

}  // namespace tarni::headless
