// RecorderWorker: makes at most one step of what the bucket holds. Background thread; what it does
// with views hops to the main thread and waits, its sleeps do not.
//
// A view that still stands in a window is described as it is now, after the application handled the
// touch. For one that is gone (a button that closed its own dialog) the draft serves that was taken
// when the touch came.
#pragma once

#include <atomic>
#include <chrono>

#include "agent/Queue/ElementsQueue.h"
#include "agent/Queue/StepDraft.h"
#include "platform/Task.h"

namespace tarni {

class RecorderWorker {
 public:
  // The one of the agent, on its ElementsQueue.
  static RecorderWorker& sharedInstance();

  explicit RecorderWorker(ElementsQueue& queue) : queue_(queue) {}

  // One run. False once the application's event loop is gone: nothing can be recorded any more.
  bool run();

  // Makes the step of what the bucket holds from the drafts, without a run: the application is
  // about to end and its event loop has. Main thread, which it holds until the deadline at most.
  void finish(std::chrono::steady_clock::time_point deadline);

 private:
  struct PendingText;

  bool flushTypedText();
  bool recordTouch();
  platform::Task<void> takePendingText(PendingText* result);
  platform::Task<void> takeTouch(StepDraftRef* result);
  void enqueue(const StepDraftRef& draft);

  ElementsQueue& queue_;
  // What was taken from the bucket and is not queued yet.
  std::atomic<int> draftsInHand_ = 0;
};

}  // namespace tarni
