// Slider: a UISlider. A finger on it sets the value. Main thread.
#pragma once

#include "backends/headless/views/Control.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::headless {

class Slider : public Control, public platform::UIValueControl {
 public:
  explicit Slider(double value = 0, platform::Class cls = platform::uikit::UISlider);

  // From 0 to 1; values outside are limited.
  double value() const { return value_; }
  void setValue(double value);
  std::string currentValue() const override;
  platform::Task<void> chooseValue(std::string value) override;
  void onChange(Action action) { addAction(ControlEvent::ValueChanged, std::move(action)); }

  bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) override;
  void drawContent(Canvas& canvas) const override;

 private:
  double value_;
};

}  // namespace tarni::headless
