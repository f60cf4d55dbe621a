#include "backends/ios/controls/SegmentedControl.h"

#include "backends/ios/controls/ControlView.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

std::shared_ptr<View> makeSegmentedControl(::UIView* view) {
  return std::make_shared<Segmented<ControlView>>(view);
}

}  // namespace tarni::ios
