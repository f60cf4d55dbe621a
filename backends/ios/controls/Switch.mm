#include "backends/ios/controls/Switch.h"

#include "backends/ios/controls/ControlView.h"
#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

bool isSwitchOn(::UIView* view) {
  return answered(view, "isOn", [&]() -> bool { return [static_cast<::UISwitch*>(view) isOn]; });
}

platform::Task<void> turnSwitch(::UIView* view, bool on) {
  return completed([control = Owned(static_cast<::UISwitch*>(view)), on] {
    guarded([&] { [control.get() setOn:on]; });
  });
}

std::shared_ptr<View> makeSwitch(::UIView* view) { return makeNamed<Switching<ControlView>>(view); }

}  // namespace tarni::ios
