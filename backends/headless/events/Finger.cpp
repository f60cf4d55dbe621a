#include "backends/headless/events/Finger.h"

#include <algorithm>
#include <cmath>

#include "backends/headless/Application.h"
#include "platform/Platform.h"

namespace tarni::headless {

using platform::CGPoint;
using platform::UITouchPhase;

namespace {

constexpr double kStepLength = 10;  // points

double uptime() {
  return platform::current().processInfo->systemUptime();
}

}  // namespace

void Finger::down(Window& window, CGPoint point) {
  if (touch_) up();
  touch_ = application_.makeTouch();
  touch_->setWindow(window.ref());
  touch_->setTapCount(1);
  touch_->_setLocationInWindow(point, true);
  touch_->setView(window.hitTest(point));
  touch_->_setIsFirstTouchForView(true);
  send(UITouchPhase::Began);
}

void Finger::moveTo(CGPoint point) {
  if (!touch_) return;
  touch_->_setLocationInWindow(point, false);
  send(UITouchPhase::Moved);
}

void Finger::up() {
  if (!touch_) return;
  send(UITouchPhase::Ended);
  touch_ = nullptr;
}

void Finger::tap(const View& view) {
  const platform::CGRect bounds = view.bounds();
  tap(view, {bounds.midX(), bounds.midY()});
}

void Finger::tap(const View& view, CGPoint point) {
  drag(view, point, point);
}

void Finger::drag(const View& view, CGPoint from, CGPoint to) {
  const auto window = std::dynamic_pointer_cast<Window>(view.window());
  if (!window) return;
  const CGPoint start = view.convertPointToWindow(from);
  const CGPoint end = view.convertPointToWindow(to);
  const auto steps =
      static_cast<int>(std::ceil(std::hypot(end.x - start.x, end.y - start.y) / kStepLength));
  down(*window, start);
  for (int step = 1; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    moveTo({std::lerp(start.x, end.x, part), std::lerp(start.y, end.y, part)});
  }
  up();
}

platform::InputEvent inputOf(const platform::UITouchRef& touch, UITouchPhase phase) {
  using platform::InputKind;
  platform::InputEvent event{InputKind::Move, touch->timestamp()};
  if (phase == UITouchPhase::Began) event.kind = InputKind::Press;
  if (phase == UITouchPhase::Ended) event.kind = InputKind::Release;
  event.window = touch->window();
  event.point = touch->locationInView(nullptr);
  if (event.window && event.kind != InputKind::Move)
    event.view = event.window->hitTest(event.point);
  return event;
}

void Finger::send(UITouchPhase phase) {
  touch_->setPhase(phase);
  touch_->setTimestamp(uptime());
  application_.showInput(inputOf(touch_, phase));
  posix::EventRecord& event = application_._touchesEvent();
  event._clearTouches();
  event._addTouch(touch_, false);
  event._setTimestamp(touch_->timestamp());
  application_.performSendEvent(event);
}

}  // namespace tarni::headless
