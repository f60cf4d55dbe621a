// Rectangle: where something stands on a screen or in a window, in points. Plain value.
#pragma once

namespace tarni::host {

struct Rectangle {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

}  // namespace tarni::host
