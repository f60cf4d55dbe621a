// ScrollView: a UIScrollView, also the one that a table or a text view is. Main thread.
#pragma once

#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

class ScrollView : public View, public platform::UIScrollView {
 public:
  using View::View;
  platform::CGPoint contentOffset() const override;
  platform::Task<void> setContentOffset(platform::CGPoint offset, bool animated) override;
};

}  // namespace tarni::ios
