// Switching<Kind>: a view of the kind that is a switch as well, as UISwitch is and as one is that
// an application calls a switch. Main thread.
#pragma once

#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

// Of a view that answers as one.
bool isSwitchOn(::UIView* view);
platform::Task<void> turnSwitch(::UIView* view, bool on);

template <typename Kind>
class Switching : public Kind, public platform::UISwitch {
 public:
  using Kind::Kind;

  bool isOn() const override { return isSwitchOn(this->native()); }
  platform::Task<void> setOn(bool on) override { return turnSwitch(this->native(), on); }
};

}  // namespace tarni::ios
