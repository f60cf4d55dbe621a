#include "backends/headless/views/ScrollView.h"

#include <algorithm>

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
  if (scrolled_) scrolled_();
}

void ScrollView::panned() {
  if (!scrollEnabled_) return;
  if (pan_->state() == GestureRecognizer::State::Began) offsetAtStart_ = contentOffset();
  if (!pan_->isRecognizing()) return;
  const platform::CGPoint moved = pan_->translationInView(*this);
  animated_ = false;
  scrollTo(limited({offsetAtStart_.x - moved.x, offsetAtStart_.y - moved.y}));
}

platform::CGPoint ScrollView::limited(platform::CGPoint offset) const {
  const platform::CGSize size = bounds().size;
  const double furthestX = std::max(0.0, contentSize_.width - size.width);
  const double furthestY = std::max(0.0, contentSize_.height - size.height);
  return {std::clamp(offset.x, 0.0, furthestX), std::clamp(offset.y, 0.0, furthestY)};
}

}  // namespace tarni::headless
