// RecorderWorker: makes at most one step of what the bucket holds. Background thread; what it does
// with views hops to the main thread and waits, its sleeps do not.
//
// A view that still stands in a window is described as it is now, after the application handled the
// touch. For one that is gone (a button that closed its own dialog) the draft serves that was taken
// when the touch came.
#pragma once

#include "agent/Queue/ElementsQueue.h"

namespace tarni {

class RecorderWorker {
 public:
  explicit RecorderWorker(ElementsQueue& queue) : queue_(queue) {}

  // One run. False once the application's event loop is gone: nothing can be recorded any more.
  bool run();

 private:
  bool flushTypedText();
  bool recordTouch();

  ElementsQueue& queue_;
};

}  // namespace tarni
