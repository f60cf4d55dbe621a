// render: draws a view and everything in it. Main thread.
#pragma once

#include "platform/UIKit/UIImage.h"

namespace tarni::headless {

class View;

// An image of the view's bounds on white, at `scale` pixels a point. Hidden views below it are left
// out; the view itself is drawn in any case. An image without pixels when the bounds are empty or
// too large to be drawn.
platform::UIImageRef render(const View& view, double scale);

}  // namespace tarni::headless
