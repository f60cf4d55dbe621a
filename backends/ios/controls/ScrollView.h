// Scrolling<Kind>: a view of the kind that scrolls as well, as UIScrollView does (also the one that
// a table or a text view is) and as one does that an application calls a scroll view. Main thread.
#pragma once

#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

// Of a view that answers as one.
platform::CGPoint offsetOf(::UIView* view);
platform::Task<void> scrollTo(::UIView* view, platform::CGPoint offset, bool animated);

template <typename Kind>
class Scrolling : public Kind, public platform::UIScrollView {
 public:
  using Kind::Kind;

  platform::CGPoint contentOffset() const override { return offsetOf(this->native()); }
  platform::Task<void> setContentOffset(platform::CGPoint offset, bool animated) override {
    return scrollTo(this->native(), offset, animated);
  }
};

using ScrollView = Scrolling<View>;

}  // namespace tarni::ios
