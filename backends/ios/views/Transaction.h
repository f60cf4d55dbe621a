// Transaction: CATransaction. Main thread.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::ios {

class Transaction : public platform::CATransaction {
 public:
  void flush() override;
};

}  // namespace tarni::ios
