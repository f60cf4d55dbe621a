#include "backends/ios/controls/ControlView.h"

#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {

platform::Task<void> ControlView::sendActionsForControlEvents(std::uint32_t events) {
  return completed([control = Owned(as<::UIControl>()), events] {
    guarded([&] { [control.get() sendActionsForControlEvents:events]; });
  });
}

std::shared_ptr<View> makeControl(::UIView* view) { return makeNamed<ControlView>(view); }

}  // namespace tarni::ios
