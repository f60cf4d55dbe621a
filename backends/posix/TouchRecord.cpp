#include "backends/posix/TouchRecord.h"

namespace tarni::posix {

platform::CGPoint TouchRecord::locationInView(const platform::UIViewRef& view) const {
  return view ? platform::convertPoint(location_, window(), view) : location_;
}

void TouchRecord::_setLocationInWindow(platform::CGPoint point, bool resetPrevious) {
  previousLocation_ = resetPrevious ? point : location_;
  location_ = point;
}

}  // namespace tarni::posix
