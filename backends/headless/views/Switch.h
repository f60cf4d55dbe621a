// Switch: a UISwitch. A tap turns it and runs the value-changed actions. Main thread.
#pragma once

#include <string_view>

#include "backends/headless/views/Control.h"

namespace tarni::headless {

class Switch : public Control, public platform::UISwitch {
 public:
  explicit Switch(bool on = false, platform::Class cls = platform::uikit::UISwitch);

  bool isOn() const override { return on_; }
  platform::Task<void> setOn(bool on) override;
  // The same without a task.
  void turn(bool on) { setContent(on_, on); }
  void onChange(Action action) { addAction(ControlEvent::ValueChanged, std::move(action)); }

  void drawContent(Canvas& canvas) const override;

 protected:
  void tapped(platform::CGPoint point) override;

 private:
  bool on_;
};

}  // namespace tarni::headless
