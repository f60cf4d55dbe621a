// Switching<Kind>: a view of the kind that is a switch as well, as UISwitch is and as one is that
// an application calls a switch. Main thread.
#pragma once

#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

template <typename Kind>
class Switching : public Kind, public platform::UISwitch {
 public:
  using Kind::Kind;

  bool isOn() const override {
    return this->ask("isOn", [&]() -> bool { return [control() isOn]; });
  }

  platform::Task<void> setOn(bool on) override {
    return completed(
        [control = Owned(control()), on] { guarded([&] { [control.get() setOn:on]; }); });
  }

 private:
  ::UISwitch* control() const { return static_cast<::UISwitch*>(this->native()); }
};

}  // namespace tarni::ios
