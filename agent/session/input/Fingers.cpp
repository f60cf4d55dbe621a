#include "agent/session/input/Fingers.h"

#include <algorithm>
#include <string>

#include "agent/interaction/UITouch_KIFAdditions.h"
#include "agent/interaction/UIView_KIFAdditions_Gestures.h"
#include "agent/recording/RecorderEvent.h"
#include "agent/session/protocol/SessionError.h"
#include "platform/Platform.h"

namespace tarni::session {

using platform::Task;
using platform::UITouchPhase;
using platform::UITouchRef;

namespace {

std::vector<long> numbersOf(const auto& fingers) {
  std::vector<long> numbers;
  for (const auto& [number, what] : fingers) numbers.push_back(number);
  return numbers;
}

}  // namespace

Task<void> Fingers::down(Spots spots) {
  std::erase_if(spots, [this](const auto& spot) { return touches_.contains(spot.first); });
  for (const auto& [number, spot] : spots) {
    const UITouchRef touch = KIFAdditions::initAtPointInWindow(spot.point, spot.window);
    if (!touch) throw SessionError(errors::kUnsupported, "this platform makes no touches");
    RecorderEvent::leaveOut(touch);
    touches_.emplace(number, touch);
  }
  co_await show(numbersOf(spots), UITouchPhase::Began);
}

Task<void> Fingers::move(Spots spots) {
  for (const auto& [number, spot] : spots) {
    const UITouchRef touch = touchOf(number);
    const auto point = platform::convertPoint(spot.point, spot.window, touch->window());
    KIFAdditions::setLocationInWindow(touch, point);
  }
  co_await show(numbersOf(spots), UITouchPhase::Moved);
}

Task<void> Fingers::up(std::vector<long> numbers) {
  std::erase_if(numbers, [this](long number) { return !touches_.contains(number); });
  co_await show(std::move(numbers), UITouchPhase::Ended);
}

Task<void> Fingers::cancel() {
  std::vector<long> numbers = numbersOf(touches_);
  co_await show(std::move(numbers), UITouchPhase::Cancelled);
}

UITouchRef Fingers::touchOf(long number) const {
  const auto found = touches_.find(number);
  if (found != touches_.end()) return found->second;
  throw SessionError(errors::kInvalidArgument, "finger " + std::to_string(number) + " is not down");
}

Task<void> Fingers::show(std::vector<long> changed, UITouchPhase phase) {
  if (changed.empty()) co_return;
  std::vector<UITouchRef> all;
  for (const auto& [number, touch] : touches_) {
    const bool rests = std::ranges::find(changed, number) == changed.end();
    KIFAdditions::setPhaseAndUpdateTimestamp(touch, rests ? UITouchPhase::Stationary : phase);
    all.push_back(touch);
  }
  // Before the event, within which another request may come.
  const bool isOver = phase == UITouchPhase::Ended || phase == UITouchPhase::Cancelled;
  if (isOver) {
    for (const long number : changed) touches_.erase(number);
  }
  co_await platform::current().application->sendEvent(KIFAdditions::eventWithTouches(all));
}

}  // namespace tarni::session
