// ElementsQueue: the bucket of touches between event capture and the recording worker. It turns the
// burst of records that one gesture makes into a single step.
//
// Records are added on the main thread; the worker takes them on the background queue. Each
// operation is atomic.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "agent/Queue/ElementInfo.h"
#include "platform/Task.h"

namespace tarni {

class ElementsQueue {
 public:
  static ElementsQueue& sharedInstance();

  // The recording tag of the view; null when it has none. Main thread.
  static std::optional<std::string> getTarniIdOfUIView(const platform::UIViewRef& view);

  // Adds a record. One of an untagged view, and a second one of a view that is in the bucket
  // already, is dropped; the answer is true when the record was kept. Main thread.
  bool addElementInfoInQueue(ElementInfoRef info);

  std::vector<ElementInfoRef> getElementsBucket() const;
  std::size_t getElementsBucketSize() const;
  // Kept for callers from outside: the worker takes the bucket.
  void clearBucket();
  // Empties the bucket and gives what was in it.
  std::vector<ElementInfoRef> takeBucket();

  // Kept for callers from outside: the worker uses the shared state's text field.
  void setEditAbleElementInfo(ElementInfoRef info);
  ElementInfoRef getEditAbleElementInfo() const;

  // One run of whoever makes steps of the bucket. False once the application's event loop is gone.
  using Worker = std::function<bool()>;
  // Hands the worker in. Once, before the thread starts.
  void setWorker(Worker worker) { worker_ = std::move(worker); }

  // Schedules one run of the worker 0.1 s from now; each run schedules the next, for as long as the
  // application's event loop lives. Any thread.
  void startRecorderActionThread();

 private:
  void runWorkerAndRearm();

  mutable std::mutex mutex_;
  std::vector<ElementInfoRef> bucket_;
  std::unordered_set<std::string> identities_;
  ElementInfoRef editAbleElementInfo_;
  Worker worker_;
};

}  // namespace tarni
