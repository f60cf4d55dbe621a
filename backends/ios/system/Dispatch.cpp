#include "backends/ios/system/Dispatch.h"

#include <utility>

#include "backends/ios/system/Source.h"

namespace tarni::ios {
namespace {

std::shared_ptr<Queue> globalQueue(const char* label, long priority) {
  return std::make_shared<Queue>(dispatch_get_global_queue(priority, 0), label, true);
}

// Every queue of the seam is one of ours here.
std::shared_ptr<Queue> own(const std::shared_ptr<platform::DispatchQueue>& queue) {
  return std::static_pointer_cast<Queue>(queue);
}

class DescriptorSource : public platform::DispatchSource {
 public:
  explicit DescriptorSource(Source source) : source_(std::move(source)) {}
  void resume() override { source_.resume(); }

 private:
  Source source_;
};

class Timer : public platform::DispatchTimer {
 public:
  explicit Timer(Source source) : source_(std::move(source)) {}

 private:
  Source source_;
};

}  // namespace

Dispatch::Dispatch(platform::MainQueue& mainQueue)
    : mainQueue_(mainQueue),
      backgroundQueue_(globalQueue("background", DISPATCH_QUEUE_PRIORITY_BACKGROUND)),
      delayQueue_(globalQueue("delays", DISPATCH_QUEUE_PRIORITY_DEFAULT)) {}

std::shared_ptr<platform::DispatchQueue> Dispatch::makeSerialQueue(std::string label) {
  const dispatch_queue_t queue = dispatch_queue_create(label.c_str(), DISPATCH_QUEUE_SERIAL);
  return std::make_shared<Queue>(queue, std::move(label), false);
}

void Dispatch::after(double seconds, platform::DispatchQueue& queue, platform::Block block) {
  static_cast<Queue&>(queue).after(seconds, std::move(block));
}

void Dispatch::afterOnMain(double seconds, platform::Block block) {
  delayQueue_->after(seconds,
                     [&main = mainQueue_, block = std::move(block)] { main.async(block); });
}

std::unique_ptr<platform::DispatchSource> Dispatch::makeReadSource(
    int descriptor, std::shared_ptr<platform::DispatchQueue> queue, platform::Block handler) {
  return std::make_unique<DescriptorSource>(
      Source::reading(descriptor, own(queue), std::move(handler)));
}

std::unique_ptr<platform::DispatchSource> Dispatch::makeWriteSource(
    int descriptor, std::shared_ptr<platform::DispatchQueue> queue, platform::Block handler) {
  return std::make_unique<DescriptorSource>(
      Source::writing(descriptor, own(queue), std::move(handler)));
}

std::unique_ptr<platform::DispatchTimer> Dispatch::makeTimer(
    double seconds, std::shared_ptr<platform::DispatchQueue> queue, platform::Block handler) {
  return std::make_unique<Timer>(Source::timer(seconds, own(queue), std::move(handler)));
}

}  // namespace tarni::ios
