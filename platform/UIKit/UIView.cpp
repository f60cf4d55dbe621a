#include "platform/UIKit/UIView.h"

#include <array>

namespace tarni::platform {

bool isDescendantOfView(const UIViewRef& view, const UIViewRef& ancestor) {
  if (!ancestor) return false;
  for (UIViewRef current = view; current; current = current->superview()) {
    if (current == ancestor) return true;
  }
  return false;
}

CGPoint convertPoint(CGPoint point, const UIViewRef& from, const UIViewRef& to) {
  CGPoint inWindow = from ? from->convertPointToWindow(point) : point;
  if (!to) return inWindow;
  if (from) {
    const UIWindowRef source = from->window();
    const UIWindowRef target = to->window();
    if (source && target && source != target) {
      const CGPoint sourceOrigin = source->frame().origin;
      const CGPoint targetOrigin = target->frame().origin;
      inWindow.x += sourceOrigin.x - targetOrigin.x;
      inWindow.y += sourceOrigin.y - targetOrigin.y;
    }
  }
  return to->convertPointFromWindow(inWindow);
}

CGRect convertRect(const CGRect& rect, const UIViewRef& from, const UIViewRef& to) {
  const std::array corners{convertPoint({rect.minX(), rect.minY()}, from, to),
                           convertPoint({rect.maxX(), rect.minY()}, from, to),
                           convertPoint({rect.minX(), rect.maxY()}, from, to),
                           convertPoint({rect.maxX(), rect.maxY()}, from, to)};
  const auto [left, right] = std::ranges::minmax(corners, {}, &CGPoint::x);
  const auto [top, bottom] = std::ranges::minmax(corners, {}, &CGPoint::y);
  return {{left.x, top.y}, {right.x - left.x, bottom.y - top.y}};
}

}  // namespace tarni::platform
