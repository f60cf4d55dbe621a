// Scrolling<Kind>: a view of the kind that scrolls as well, as UIScrollView does (also the one that
// a table or a text view is) and as one does that an application calls a scroll view. Main thread.
#pragma once

#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

template <typename Kind>
class Scrolling : public Kind, public platform::UIScrollView {
 public:
  using Kind::Kind;

  platform::CGPoint contentOffset() const override {
    return toPoint(this->ask("contentOffset", [&] { return [scroll() contentOffset]; }));
  }

  platform::Task<void> setContentOffset(platform::CGPoint offset, bool animated) override {
    return completed([view = Owned(scroll()), offset, animated] {
      guarded([&] { [view.get() setContentOffset:fromPoint(offset) animated:animated]; });
    });
  }

 private:
  ::UIScrollView* scroll() const { return static_cast<::UIScrollView*>(this->native()); }
};

using ScrollView = Scrolling<View>;

}  // namespace tarni::ios
