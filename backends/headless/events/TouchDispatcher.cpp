#include "backends/headless/events/TouchDispatcher.h"

#include <algorithm>
#include <array>

namespace tarni::headless {

using platform::UITouchPhase;
using platform::UITouchRef;
using Touches = std::vector<UITouchRef>;

namespace {

// A control's own answer to a tap goes before the tap recognizers of the views above it.
std::vector<std::shared_ptr<GestureRecognizer>> recognizersAbove(View* touched) {
  std::vector<std::shared_ptr<GestureRecognizer>> found;
  bool isInsideControl = false;
  for (View* view = touched; view; view = view->parent()) {
    for (const auto& recognizer : view->recognizers()) {
      if (!isInsideControl || !recognizer->yieldsToControls()) found.push_back(recognizer);
    }
    isInsideControl = isInsideControl || view->prefersItselfToRecognizers();
  }
  return found;
}

Touches inPhase(const Touches& touches, UITouchPhase phase) {
  Touches chosen;
  std::ranges::copy_if(touches, std::back_inserter(chosen),
                       [&](const UITouchRef& touch) { return touch->phase() == phase; });
  return chosen;
}

template <typename Range, typename Value>
bool contains(const Range& range, const Value& value) {
  return std::ranges::find(range, value) != range.end();
}

}  // namespace

void TouchDispatcher::dispatch(const platform::UIEvent& event) {
  if (event.type() != platform::UIEventType::Touches) return;
  // The event is refilled for the next send, which may happen while this one is handled.
  const Touches all = event.allTouches();  // NOLINT(performance-unnecessary-copy-initialization)
  forgetVanishedFingers();
  Touches known;
  for (const UITouchRef& touch : all) {
    const bool begins = touch->phase() == UITouchPhase::Began;
    if (begins ? fingerDown(touch) : fingerOf(touch)) known.push_back(touch);
  }
  giveToRecognizers(known);
  for (const UITouchRef& touch : known) {
    const FingerRef finger = fingerOf(touch);
    if (!finger) continue;
    const UITouchPhase phase = touch->phase();
    if (phase == UITouchPhase::Ended || phase == UITouchPhase::Cancelled) {
      std::erase(fingers_, finger);
    }
    if (!finger->cancelled) giveToView(phase, *touch);
  }
}

void TouchDispatcher::forgetVanishedFingers() {
  std::erase_if(fingers_, [](const FingerRef& finger) { return finger->touch.expired(); });
}

TouchDispatcher::FingerRef TouchDispatcher::fingerOf(const UITouchRef& touch) const {
  const auto found = std::ranges::find_if(
      fingers_, [&](const FingerRef& finger) { return finger->touch.lock() == touch; });
  return found == fingers_.end() ? nullptr : *found;
}

TouchDispatcher::FingerRef TouchDispatcher::fingerDown(const UITouchRef& touch) {
  const auto view = std::dynamic_pointer_cast<View>(touch->view());
  if (!view) return nullptr;
  if (const FingerRef known = fingerOf(touch)) std::erase(fingers_, known);
  fingers_.push_back(std::make_shared<Finger>(Finger{touch, recognizersAbove(view.get())}));
  return fingers_.back();
}

void TouchDispatcher::giveToRecognizers(const Touches& touches) {
  Recognizers recognizers;
  for (const UITouchRef& touch : touches) {
    for (const auto& recognizer : fingerOf(touch)->recognizers) {
      if (!contains(recognizers, recognizer)) recognizers.push_back(recognizer);
    }
  }
  for (const auto& recognizer : recognizers) {
    Touches followed;
    for (const UITouchRef& touch : touches) {
      const FingerRef finger = fingerOf(touch);
      if (finger && contains(finger->recognizers, recognizer)) followed.push_back(touch);
    }
    const bool hadRecognized = recognizer->hasRecognized();
    constexpr std::array kPhases{UITouchPhase::Began, UITouchPhase::Moved, UITouchPhase::Stationary,
                                 UITouchPhase::Ended, UITouchPhase::Cancelled};
    for (const UITouchPhase phase : kPhases) {
      const Touches changed = inPhase(followed, phase);
      if (!changed.empty()) recognizer->handle(phase, changed);
    }
    if (!hadRecognized && recognizer->hasRecognized()) recognized(*recognizer, followed);
  }
}

void TouchDispatcher::recognized(GestureRecognizer& winner, const Touches& touches) {
  for (const UITouchRef& touch : touches) {
    const FingerRef finger = fingerOf(touch);
    if (!finger) continue;
    for (const auto& other : finger->recognizers) {
      if (other.get() != &winner) other->cancel();
    }
    if (std::exchange(finger->cancelled, true)) continue;
    if (touch->phase() != UITouchPhase::Began) giveToView(UITouchPhase::Cancelled, *touch);
  }
}

void TouchDispatcher::giveToView(UITouchPhase phase, platform::UITouch& touch) {
  auto view = std::dynamic_pointer_cast<View>(touch.view());
  while (view && !view->handleTouch(phase, touch)) {
    view = view->parent() ? view->parent()->ref() : nullptr;
  }
}

}  // namespace tarni::headless
