// MainQueue: the main queue, served by the application's run loop. It never closes: the process
// ends with the run loop.
#pragma once

#include "platform/Dispatch/SerialMainQueue.h"

namespace tarni::ios {

class MainQueue : public platform::SerialMainQueue {
 public:
  bool isMainThread() const override;

 private:
  void wake() noexcept override;
};

}  // namespace tarni::ios
