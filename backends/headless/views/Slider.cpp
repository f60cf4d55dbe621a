#include "backends/headless/views/Slider.h"

#include <algorithm>

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {
namespace {

constexpr double knob = 28;  // points

}  // namespace

Slider::Slider(double value, platform::Class cls) : Control(cls) {
  setValue(value);
}

void Slider::setValue(double value) {
  value_ = std::clamp(value, 0.0, 1.0);
}

bool Slider::handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) {
  const double track = bounds().size.width - knob;
  if (isEnabled() && track > 0 && phase != platform::UITouchPhase::Cancelled) {
    const double before = value_;
    setValue((touch.locationInView(ref()).x - bounds().minX() - knob / 2) / track);
    if (value_ != before) sendActions(ControlEvent::ValueChanged);
  }
  return Control::handleTouch(phase, touch);
}

void Slider::drawContent(Canvas& canvas) const {
  constexpr double thickness = 4;
  const platform::CGRect own = bounds();
  const double x = own.minX() + knob / 2 + value_ * (own.size.width - knob);
  const double y = own.midY() - thickness / 2;
  canvas.fill({{own.minX(), y}, {own.size.width, thickness}}, colors::lightGray, thickness / 2);
  canvas.fill({{own.minX(), y}, {x - own.minX(), thickness}}, colors::blue, thickness / 2);
  const platform::CGRect thumb{{x - knob / 2, own.midY() - knob / 2}, {knob, knob}};
  canvas.fill(thumb, colors::white, knob / 2);
  canvas.stroke(thumb, colors::lightGray, 1, knob / 2);
}

}  // namespace tarni::headless
