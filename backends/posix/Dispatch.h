// Dispatch: queues, timers and readiness of descriptors for every backend on a POSIX system.
//
// Threads: one ("tarni-io") watches descriptors and timers; serial queues share a pool that grows
// while its threads are kept busy ("tarni-queue"), the background queue has one of its own at a
// raised niceness ("tarni-bg"). All of them block every signal, so that no handler of the
// application runs there. They are never joined: the object lives as long as the process.
#pragma once

#include <memory>
#include <string>

#include "platform/Dispatch/Dispatch.h"

namespace tarni::posix {

class ConcurrentQueue;
class EventLoop;
class WorkerPool;

class Dispatch : public platform::Dispatch {
 public:
  explicit Dispatch(platform::MainQueue& mainQueue);
  // Leaves the threads and whatever they still do alone; for tests that make one of their own.
  ~Dispatch() override;

  platform::MainQueue& mainQueue() override { return mainQueue_; }
  platform::DispatchQueue& backgroundQueue() override;
  std::shared_ptr<platform::DispatchQueue> makeSerialQueue(std::string label) override;
  // `queue` must outlive the delay.
  void after(double seconds, platform::DispatchQueue& queue, platform::Block block) override;
  void afterOnMain(double seconds, platform::Block block) override;
  // The handler of a source may run on the thread that watches descriptors and timers, while all
  // others of these wait: it must be short whatever the peer does, and leaves more to its queue.
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
  EventLoop& eventLoop_;
  WorkerPool& serialPool_;
  ConcurrentQueue& backgroundQueue_;
};

}  // namespace tarni::posix
