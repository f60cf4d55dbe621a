// ScrollView: a UIScrollView that scrolls with a finger. Main thread.
//
// The content offset is the origin of the bounds. A finger scrolls once it has moved more than ten
// points, in whichever direction the content is larger than the view; the view it began on is then
// cancelled. The content stops at its edges. An animated change shows its end at once.
#pragma once

#include <memory>

#include "backends/headless/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::headless {

class PanGestureRecognizer;

class ScrollView : public View, public platform::UIScrollView {
 public:
  explicit ScrollView(platform::Class cls = platform::uikit::UIScrollView);

  platform::CGPoint contentOffset() const override { return bounds().origin; }
  platform::Task<void> setContentOffset(platform::CGPoint offset, bool animated) override;
  // The same without a task; as there, the content's edges are not a limit.
  void scrollTo(platform::CGPoint offset);
  // By a way, up to the edges.
  void scrollBy(platform::CGPoint way);
  platform::CGSize contentSize() const { return contentSize_; }
  void setContentSize(platform::CGSize size) { contentSize_ = size; }
  // Whether the latest change of the offset was asked to be animated.
  bool wasAnimated() const { return animated_; }

 private:
  void panned();
  bool canFollowFinger() const;
  // The furthest offset at which there is still content at every edge.
  platform::CGPoint furthest() const;
  platform::CGPoint limited(platform::CGPoint offset) const;

  std::shared_ptr<PanGestureRecognizer> pan_;
  platform::CGSize contentSize_;
  platform::CGPoint offsetAtStart_;
  bool animated_ = false;
};

}  // namespace tarni::headless
