#include "backends/ios/controls/Switch.h"

#include "backends/ios/controls/ControlView.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

std::shared_ptr<View> makeSwitch(::UIView* view) {
  return std::make_shared<Switching<ControlView>>(view);
}

}  // namespace tarni::ios
