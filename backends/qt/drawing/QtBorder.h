// QtBorder: the border of one view, drawn above everything else in the view's window. Off the
// screen with its owner. GUI thread.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::qt {

class QtBorder {
 public:
  virtual ~QtBorder() = default;
  // Shows the border, which has a width, where its view is now.
  virtual void setBorder(double width, const platform::CGColor& color) = 0;
};

}  // namespace tarni::qt
