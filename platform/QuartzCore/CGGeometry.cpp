#include "platform/QuartzCore/CGGeometry.h"

#include <array>

namespace tarni::platform {

CGRect CGRectApplyAffineTransform(const CGRect& rect, const CGAffineTransform& transform) {
  const std::array corners{
      transform.apply({rect.minX(), rect.minY()}), transform.apply({rect.maxX(), rect.minY()}),
      transform.apply({rect.minX(), rect.maxY()}), transform.apply({rect.maxX(), rect.maxY()})};
  const auto [left, right] = std::ranges::minmax(corners, {}, &CGPoint::x);
  const auto [top, bottom] = std::ranges::minmax(corners, {}, &CGPoint::y);
  return {{left.x, top.y}, {right.x - left.x, bottom.y - top.y}};
}

}  // namespace tarni::platform
