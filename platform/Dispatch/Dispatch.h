// Queues, delays, timers and readiness of descriptors.
//
// Blocks never throw: what escapes one is logged and dropped. Queues, sources and timers may be
// used from any thread; each function says where its block runs.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Task.h"

namespace tarni::platform {

using Block = std::function<void()>;

// A serial or concurrent queue of blocks.
class DispatchQueue {
 public:
  virtual ~DispatchQueue() = default;
  virtual const std::string& label() const = 0;
  virtual bool isConcurrent() const = 0;
  // True inside a block of this queue.
  virtual bool isCurrent() const = 0;
  // Runs `block` later, in order when the queue is serial.
  virtual void async(Block block) = 0;
  // Runs `block` on the calling thread when the queue is idle and the platform can do so, otherwise
  // later: saves short blocks the change of threads.
  virtual void runNowOrAsync(Block block) { async(std::move(block)); }
  // Runs `block` and waits for its end. Called on the queue itself it runs at once.
  virtual void sync(const Block& block) = 0;
};

// The application's main queue. An item is a task, and the next one starts only when the one before
// has ended, however long it was suspended and whichever nested event loop of the application it
// was resumed from: one command never starts inside another.
class MainQueue {
 public:
  virtual ~MainQueue() = default;
  // True on the application's main thread.
  virtual bool isMainThread() const = 0;
  // Appends an item. `work` is called on the main thread when its turn comes.
  virtual void asyncTask(std::function<Task<void>()> work) = 0;
  // Appends an item and waits until it ended; not to be called on the main thread. Answers false,
  // without having run it, once the application's event loop is gone.
  virtual bool syncTask(std::function<Task<void>()> work) = 0;

  // The same for work that needs no time.
  void async(Block block);
  bool sync(Block block);
};

// Watches one descriptor. Starts suspended.
class DispatchSource {
 public:
  // Cancels: no event handler starts afterwards on the source's queue.
  virtual ~DispatchSource() = default;
  // Each call allows one event: the handler runs once when the descriptor is ready.
  virtual void resume() = 0;
};

// A one-shot timer.
class DispatchTimer {
 public:
  // Cancels: the handler does not run afterwards.
  virtual ~DispatchTimer() = default;
};

class Dispatch {
 public:
  virtual ~Dispatch() = default;
  virtual MainQueue& mainQueue() = 0;
  // The global concurrent queue of background priority. Blocks may sleep on it.
  virtual DispatchQueue& backgroundQueue() = 0;
  virtual std::shared_ptr<DispatchQueue> makeSerialQueue(std::string label) = 0;
  // Runs `block` on `queue` once `seconds` have passed. On the background queue a thread may sleep
  // until then, and what a block there asks for may wait for that block's end: for beats.
  virtual void after(double seconds, DispatchQueue& queue, Block block) = 0;
  // Appends `block` to the main queue once `seconds` have passed.
  virtual void afterOnMain(double seconds, Block block) = 0;
  // The handler runs on `queue`; the source keeps the queue alive, never the handler's owner. The
  // descriptor stays the caller's and must outlive the source.
  virtual std::unique_ptr<DispatchSource> makeReadSource(int descriptor,
                                                         std::shared_ptr<DispatchQueue> queue,
                                                         Block handler) = 0;
  virtual std::unique_ptr<DispatchSource> makeWriteSource(int descriptor,
                                                          std::shared_ptr<DispatchQueue> queue,
                                                          Block handler) = 0;
  virtual std::unique_ptr<DispatchTimer> makeTimer(double seconds,
                                                   std::shared_ptr<DispatchQueue> queue,
                                                   Block handler) = 0;
};

}  // namespace tarni::platform
