#include "agent/session/screen/Survey.h"

#include <algorithm>

#include "platform/Platform.h"

namespace tarni::session {

using platform::CGRect;
using platform::UIViewRef;

Surroundings Surroundings::inside(const UIViewRef& parent) {
  std::vector<UIViewRef> chain;
  for (UIViewRef view = parent; view; view = view->superview()) chain.push_back(view);
  Surroundings surroundings;
  // The window is the topmost: its own coordinates are the ones that count.
  surroundings.isHidden_ = chain.back()->isHidden();
  for (std::size_t at = chain.size() - 1; at-- > 0;) surroundings = surroundings.below(chain[at]);
  return surroundings;
}

Surroundings Surroundings::below(const UIViewRef& view) const {
  Surroundings inner = *this;
  inner.isHidden_ = isHidden_ || view->isHidden();
  inner.isMovedOnly_ = isMovedOnly_ && view->transform().isIdentity();
  const platform::CGPoint shift = view->frame().origin;
  const platform::CGPoint scrolled = view->bounds().origin;
  inner.origin_.x += shift.x - scrolled.x;
  inner.origin_.y += shift.y - scrolled.y;
  if (view->clipsToBounds()) {
    const CGRect rect = placeOf(view).rect;
    inner.clip_ = clip_ ? platform::CGRectIntersection(rect, *clip_) : rect;
  }
  return inner;
}

Place Surroundings::placeOf(const UIViewRef& view) const {
  Place place{view->frame()};
  if (isMovedOnly_) {
    place.rect.origin.x += origin_.x;
    place.rect.origin.y += origin_.y;
  } else {
    place.rect = platform::convertRect(place.rect, view->superview(), nullptr);
  }
  const platform::CGSize size =
      clip_ ? platform::CGRectIntersection(place.rect, *clip_).size : place.rect.size;
  place.isVisible = !isHidden_ && size.width > 0 && size.height > 0 && !view->isHidden();
  return place;
}

Place placeOf(const UIViewRef& view) {
  const UIViewRef parent = view->superview();
  if (parent) return Surroundings::inside(parent).placeOf(view);
  return {{{0, 0}, view->bounds().size}, !view->isHidden()};
}

// A step aside or up leaves what is known of the levels above it.
void SurveyPath::follow(std::span<const WalkLevel> levels) {
  levels_ = levels;
  known_ = std::min(known_, levels.size());
}

Place SurveyPath::placeOf(const UIViewRef& view) {
  surroundings_.resize(std::max(surroundings_.size(), levels_.size()));
  for (; known_ < levels_.size(); ++known_) {
    const UIViewRef& parent = *levels_[known_].parent;
    surroundings_[known_] =
        known_ == 0 ? Surroundings::inside(parent) : surroundings_[known_ - 1].below(parent);
  }
  return surroundings_[levels_.size() - 1].placeOf(view);
}

std::vector<platform::UIWindowRef> shownWindows() {
  return platform::current().application->windowsWithKeyWindow();
}

std::vector<platform::UIWindowRef> windowsInReachFirst() {
  std::vector<platform::UIWindowRef> windows = shownWindows();
  const std::vector<platform::UIWindowRef> reached =
      platform::current().application->windowsThatTakeInput();
  const auto isReached = [&reached](const platform::UIWindowRef& window) {
    return std::ranges::find(reached, window) != reached.end();
  };
  std::stable_partition(windows.begin(), windows.end(), isReached);
  return windows;
}

}  // namespace tarni::session
