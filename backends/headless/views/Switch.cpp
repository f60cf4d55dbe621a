#include "backends/headless/views/Switch.h"

#include <algorithm>

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {

Switch::Switch(bool on, platform::Class cls) : Control(cls), on_(on) {
  setFrame({{0, 0}, {51, 31}});
}

platform::Task<void> Switch::setOn(bool on) {
  turn(on);
  co_return;
}

void Switch::tapped(platform::CGPoint) {
  turn(!on_);
  sendActions(ControlEvent::ValueChanged);
}

void Switch::drawContent(Canvas& canvas) const {
  constexpr double kInset = 2;
  const platform::CGRect own = bounds();
  const double height = own.size.height;
  const double knob = std::max(0.0, height - 2 * kInset);
  const double left = on_ ? own.maxX() - kInset - knob : own.minX() + kInset;
  canvas.fill(own, on_ ? colors::kGreen : colors::kLightGray, height / 2);
  canvas.fill({{left, own.minY() + kInset}, {knob, knob}}, colors::kWhite, knob / 2);
}

}  // namespace tarni::headless
