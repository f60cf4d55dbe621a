// QtTransaction: draws the windows that wait to be drawn. GUI thread.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::qt {

class QtTransaction : public platform::CATransaction {
 public:
  // Repaints now; the program's other events stay where they are.
  void flush() override;
};

}  // namespace tarni::qt
