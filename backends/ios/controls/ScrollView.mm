#include "backends/ios/controls/ScrollView.h"

#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

platform::CGPoint offsetOf(::UIView* view) {
  return toPoint(answered(view, "contentOffset",
                          [&] { return [static_cast<::UIScrollView*>(view) contentOffset]; }));
}

platform::Task<void> scrollTo(::UIView* view, platform::CGPoint offset, bool animated) {
  return completed([scroll = Owned(static_cast<::UIScrollView*>(view)), offset, animated] {
    guarded([&] { [scroll.get() setContentOffset:fromPoint(offset) animated:animated]; });
  });
}

std::shared_ptr<View> makeScrollView(::UIView* view) { return makeNamed<ScrollView>(view); }

}  // namespace tarni::ios
