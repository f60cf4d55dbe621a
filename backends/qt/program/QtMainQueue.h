// QtMainQueue: the application's main queue, served by the program's own event loop, nested modal
// loops included. It closes when the application object goes, so that a thread of the agent never
// waits for a loop that is gone.
#pragma once

#include "platform/Dispatch/SerialMainQueue.h"

namespace tarni::qt {

class QtMainQueue : public platform::SerialMainQueue {
 public:
  // The one queue of the process; made on the GUI thread while the application object exists.
  static QtMainQueue& shared();

  bool isMainThread() const override;

 private:
  QtMainQueue();
  void wake() noexcept override;
};

}  // namespace tarni::qt
