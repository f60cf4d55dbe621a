// Dispatch: queues, timers and readiness of descriptors by libdispatch.
#pragma once

#include <memory>
#include <string>

#include "backends/ios/system/Queue.h"
#include "platform/Dispatch/Dispatch.h"

namespace tarni::ios {

class Dispatch : public platform::Dispatch {
 public:
  // The queue must outlive everything: it lives as long as the process.
  explicit Dispatch(platform::MainQueue& mainQueue);

  platform::MainQueue& mainQueue() override { return mainQueue_; }
  platform::DispatchQueue& backgroundQueue() override { return *backgroundQueue_; }
  std::shared_ptr<platform::DispatchQueue> makeSerialQueue(std::string label) override;
  // `queue` is one of these; it need not outlive the delay.
  void after(double seconds, platform::DispatchQueue& queue, platform::Block block) override;
  void afterOnMain(double seconds, platform::Block block) override;
  // Sources keep the descriptor open for a moment after they have gone (Source.h).
  std::unique_ptr<platform::DispatchSource> makeReadSource(
      int descriptor, std::shared_ptr<platform::DispatchQueue> queue,
      platform::Block handler) override;
  std::unique_ptr<platform::DispatchSource> makeWriteSource(
      int descriptor, std::shared_ptr<platform::DispatchQueue> queue,
      platform::Block handler) override;
  std::unique_ptr<platform::DispatchTimer> makeTimer(double seconds,
                                                     std::shared_ptr<platform::DispatchQueue> queue,
                                                     platform::Block handler) override;

 private:
  platform::MainQueue& mainQueue_;
  std::shared_ptr<Queue> backgroundQueue_;
  std::shared_ptr<Queue> delayQueue_;  // carries what is due on the main queue there
};

}  // namespace tarni::ios
