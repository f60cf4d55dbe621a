#include "backends/ios/controls/ScrollView.h"

#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

platform::CGPoint ScrollView::contentOffset() const {
  return toPoint(ask("contentOffset", [&] { return [as<::UIScrollView>() contentOffset]; }));
}

platform::Task<void> ScrollView::setContentOffset(platform::CGPoint offset, bool animated) {
  return completed([view = Owned(as<::UIScrollView>()), offset, animated] {
    guarded([&] { [view.get() setContentOffset:fromPoint(offset) animated:animated]; });
  });
}

std::shared_ptr<View> makeScrollView(::UIView* view) { return std::make_shared<ScrollView>(view); }

}  // namespace tarni::ios
