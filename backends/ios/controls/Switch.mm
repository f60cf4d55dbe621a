#include "backends/ios/controls/ControlView.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

class Switch : public ControlView, public platform::UISwitch {
 public:
  using ControlView::ControlView;

  bool isOn() const override {
    return ask("isOn", [&]() -> bool { return [as<::UISwitch>() isOn]; });
  }

  platform::Task<void> setOn(bool on) override {
    return completed(
        [control = Owned(as<::UISwitch>()), on] { guarded([&] { [control.get() setOn:on]; }); });
  }
};

}  // namespace

std::shared_ptr<View> makeSwitch(::UIView* view) { return std::make_shared<Switch>(view); }

}  // namespace tarni::ios
