// A picture of which parts can be made unreadable. A backend's image derives from UIImage and,
// where the platform can do that, from this. Any thread.
#pragma once

#include <span>

#include "platform/UIKit/UIImage.h"

namespace tarni::platform {

class BlurrableImage {
 public:
  virtual ~BlurrableImage() = default;
  // A new image with a blur in place of what these rectangles show, from which nothing of it can be
  // made out, nor how long it is. Null when there is no memory for it.
  virtual UIImageRef blurred(std::span<const CGRect> parts) const = 0;
};

}  // namespace tarni::platform
