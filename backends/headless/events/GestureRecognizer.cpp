#include "backends/headless/events/GestureRecognizer.h"

#include <algorithm>
#include <cmath>

namespace tarni::headless {

using platform::CGPoint;
using platform::UITouchPhase;
using platform::uikit::UIGestureRecognizer;

namespace {

constexpr double kAllowedMovement = 10;       // points
constexpr double kLongestTap = 1.5;           // seconds
constexpr double kLongestPauseOfTaps = 0.35;  // seconds

platform::Class recognizerClass(std::string_view name) {
  return platform::defineClass(name, UIGestureRecognizer);
}

}  // namespace

// --- GestureRecognizer

namespace {

CGPoint middle(const GestureRecognizer::Touches& touches) {
  CGPoint sum;
  for (const platform::UITouchRef& touch : touches) {
    const CGPoint point = touch->locationInView(nullptr);
    sum.x += point.x;
    sum.y += point.y;
  }
  const auto count = static_cast<double>(std::max<std::size_t>(touches.size(), 1));
  return {sum.x / count, sum.y / count};
}

bool contains(const GestureRecognizer::Touches& touches, const platform::UITouchRef& touch) {
  return std::ranges::find(touches, touch) != touches.end();
}

}  // namespace

GestureRecognizer::Touches GestureRecognizer::touches() const {
  Touches alive;
  for (const auto& weak : touches_) {
    if (platform::UITouchRef touch = weak.lock()) alive.push_back(std::move(touch));
  }
  return alive;
}

CGPoint GestureRecognizer::locationInWindow() const {
  return middle(touches());
}

CGPoint GestureRecognizer::middleWithout(const Touches& ending) const {
  Touches staying = touches();
  std::erase_if(staying, [&](const auto& touch) { return contains(ending, touch); });
  return middle(staying);
}

void GestureRecognizer::handle(UITouchPhase phase, const Touches& touches) {
  std::erase_if(touches_, [](const auto& touch) { return touch.expired(); });
  if (phase == UITouchPhase::Began) {
    if (touches_.empty()) {
      state_ = State::Possible;
      reset();
    }
    touches_.insert(touches_.end(), touches.begin(), touches.end());
  }
  const bool isOver = state_ == State::Failed || state_ == State::Cancelled;
  switch (phase) {
    case UITouchPhase::Began:
      if (!isOver) began();
      break;
    case UITouchPhase::Moved:
    case UITouchPhase::Stationary:
      if (!isOver) moved();
      break;
    case UITouchPhase::Ended:
      if (!isOver) ended(touches);
      forget(touches);
      if (touches_.empty() && isRecognizing()) recognize(State::Ended);
      break;
    case UITouchPhase::Cancelled:
      forget(touches);
      cancel();
      break;
  }
}

void GestureRecognizer::cancel() {
  if (isRecognizing()) {
    recognize(State::Cancelled);
  } else if (state_ == State::Possible) {
    state_ = State::Failed;
  }
}

void GestureRecognizer::recognize(State state) {
  state_ = state;
  const Action action = action_;  // it may take the recognizer away
  if (action) action();
}

void GestureRecognizer::forget(const Touches& touches) {
  std::erase_if(touches_, [&](const auto& own) { return contains(touches, own.lock()); });
}

double GestureRecognizer::distance(CGPoint a, CGPoint b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

// --- tap

TapGestureRecognizer::TapGestureRecognizer(Action action, std::size_t touchesRequired,
                                           int tapsRequired)
    : GestureRecognizer(platform::uikit::UITapGestureRecognizer, std::move(action)),
      touchesRequired_(touchesRequired),
      tapsRequired_(tapsRequired) {}

void TapGestureRecognizer::began() {
  const Touches down = touches();
  if (most_ == 0) {
    start_ = down.front()->timestamp();
    if (start_ - lastTap_ > kLongestPauseOfTaps) taps_ = 0;
  }
  most_ = std::max(most_, down.size());
  startLocation_ = middle(down);
  if (most_ > touchesRequired_) fail();
}

void TapGestureRecognizer::moved() {
  if (distance(locationInWindow(), startLocation_) > kAllowedMovement) fail();
}

void TapGestureRecognizer::ended(const Touches& ending) {
  if (ending.size() < touches().size()) {
    startLocation_ = middleWithout(ending);
    return;
  }
  const double now = ending.front()->timestamp();
  if (most_ != touchesRequired_ || now - start_ > kLongestTap) return fail();
  lastTap_ = now;
  if (++taps_ < tapsRequired_) return;
  taps_ = 0;
  recognize(State::Ended);
}

// --- pan

PanGestureRecognizer::PanGestureRecognizer(Action action, platform::Class cls)
    : GestureRecognizer(cls, std::move(action)) {}

platform::Class PanGestureRecognizer::panClass() {
  return recognizerClass("UIPanGestureRecognizer");
}

CGPoint PanGestureRecognizer::translationInView(const View& view) const {
  const CGPoint origin = view.convertPointFromWindow({});
  const CGPoint moved = view.convertPointFromWindow(translation_);
  return {moved.x - origin.x, moved.y - origin.y};
}

void PanGestureRecognizer::began() {
  last_ = locationInWindow();
}

void PanGestureRecognizer::moved() {
  const CGPoint location = locationInWindow();
  translation_.x += location.x - last_.x;
  translation_.y += location.y - last_.y;
  last_ = location;
  if (isRecognizing()) return recognize(State::Changed);
  if (distance(translation_, {}) <= kAllowedMovement) return;
  if (shouldBegin_ && !shouldBegin_()) return fail();
  recognize(State::Began);
}

void PanGestureRecognizer::ended(const Touches& ending) {
  last_ = middleWithout(ending);
}

}  // namespace tarni::headless
