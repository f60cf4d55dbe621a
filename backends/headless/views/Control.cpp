#include "backends/headless/views/Control.h"

namespace tarni::headless {

using platform::CGPoint;
using platform::UITouchPhase;

void Control::addAction(std::uint32_t events, Action action) {
  actions_.emplace_back(events, std::move(action));
}

void Control::sendActions(std::uint32_t events) {
  const ViewRef alive = ref();
  const auto actions = actions_;  // an action may add others
  for (const auto& [wanted, action] : actions) {
    if (wanted & events) action();
  }
}

platform::Task<void> Control::sendActionsForControlEvents(std::uint32_t events) {
  sendActions(events);
  co_return;
}

bool Control::handleTouch(UITouchPhase phase, platform::UITouch& touch) {
  if (phase == UITouchPhase::Began) {
    trackedTouch_ = &touch;
    highlighted_ = enabled_;
    if (enabled_) sendActions(ControlEvent::TouchDown);
    return true;
  }
  if (trackedTouch_ != &touch) return true;
  const CGPoint point = touch.locationInView(ref());
  if (phase == UITouchPhase::Moved && enabled_) {
    highlighted_ = isInside(point);
    sendActions(highlighted_ ? ControlEvent::TouchDragInside : ControlEvent::TouchDragOutside);
  } else if (phase == UITouchPhase::Ended) {
    touchEnded(point);
  } else if (phase == UITouchPhase::Cancelled) {
    trackedTouch_ = nullptr;
    highlighted_ = false;
    if (enabled_) sendActions(ControlEvent::TouchCancel);
  }
  return true;
}

void Control::touchEnded(CGPoint point) {
  trackedTouch_ = nullptr;
  highlighted_ = false;
  if (!enabled_) return;
  if (isInside(point)) {
    tapped(point);
    sendActions(ControlEvent::TouchUpInside);
  } else {
    sendActions(ControlEvent::TouchUpOutside);
  }
}

bool Control::isInside(CGPoint point) const {
  const double margin = touchMargin();
  const platform::CGRect own = bounds();
  const platform::CGRect reach{{own.minX() - margin, own.minY() - margin},
                               {own.size.width + 2 * margin, own.size.height + 2 * margin}};
  return pointInside(point) || reach.contains(point);
}

}  // namespace tarni::headless
