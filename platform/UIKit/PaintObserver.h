// PaintObserver: hears when windows show something new, so that who keeps a picture of them need
// not take it again to see. What the agent draws for itself does not count.
#pragma once

#include "platform/UIKit/UIView.h"

namespace tarni::platform {

class PaintObserver {
 public:
  virtual ~PaintObserver() = default;
  // Main thread, before or after the window is drawn. Null: a window was opened or closed. Quick,
  // and throws nothing.
  virtual void paints(const UIWindowRef& window) noexcept = 0;
};

}  // namespace tarni::platform
