// ControlView: what the kinds of controls have in common. Main thread.
#pragma once

#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

class ControlView : public View, public platform::UIControl {
 public:
  using View::View;
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
};

}  // namespace tarni::ios
