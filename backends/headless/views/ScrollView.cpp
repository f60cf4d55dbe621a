#include "backends/headless/views/ScrollView.h"

#include <algorithm>
#include <cmath>

#include "backends/headless/events/GestureRecognizer.h"

namespace tarni::headless {
namespace {

platform::Class scrollPanClass() {
  return platform::defineClass("UIScrollViewPanGestureRecognizer",
                               PanGestureRecognizer::panClass());
}

}  // namespace

ScrollView::ScrollView(platform::Class cls)
    : View(cls),
      pan_(std::make_shared<PanGestureRecognizer>([this] { panned(); }, scrollPanClass())) {
  setClipsToBounds(true);
  pan_->setShouldBegin([this] { return canFollowFinger(); });
  addGestureRecognizer(pan_);
}

platform::Task<void> ScrollView::setContentOffset(platform::CGPoint offset, bool animated) {
  animated_ = animated;
  scrollTo(offset);
  co_return;
}

void ScrollView::scrollTo(platform::CGPoint offset) {
  if (offset == contentOffset()) return;
  setBounds({offset, bounds().size});
}

void ScrollView::scrollBy(platform::CGPoint way) {
  const platform::CGPoint from = contentOffset();
  scrollTo(limited({from.x + way.x, from.y + way.y}));
}

void ScrollView::panned() {
  if (pan_->state() == GestureRecognizer::State::Began) offsetAtStart_ = contentOffset();
  if (!pan_->isRecognizing()) return;
  const platform::CGPoint moved = pan_->translationInView(*this);
  animated_ = false;
  scrollTo(limited({offsetAtStart_.x - moved.x, offsetAtStart_.y - moved.y}));
}

bool ScrollView::canFollowFinger() const {
  const platform::CGPoint moved = pan_->translationInView(*this);
  const bool isVertical = std::abs(moved.y) > std::abs(moved.x);
  return (isVertical ? furthest().y : furthest().x) > 0;
}

platform::CGPoint ScrollView::furthest() const {
  const platform::CGSize size = bounds().size;
  return {std::max(0.0, contentSize_.width - size.width),
          std::max(0.0, contentSize_.height - size.height)};
}

platform::CGPoint ScrollView::limited(platform::CGPoint offset) const {
  const platform::CGPoint end = furthest();
  return {std::clamp(offset.x, 0.0, end.x), std::clamp(offset.y, 0.0, end.y)};
}

}  // namespace tarni::headless
