// Transaction: counts the requests to draw. Nothing waits to be drawn without a screen. Main
// thread.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::headless {

class Transaction : public platform::CATransaction {
 public:
  void flush() override { ++flushes_; }
  int flushes() const { return flushes_; }

 private:
  int flushes_ = 0;
};

}  // namespace tarni::headless
