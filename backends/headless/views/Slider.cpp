#include "backends/headless/views/Slider.h"

#include <algorithm>

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {
namespace {

constexpr double kKnob = 28;  // points

}  // namespace

Slider::Slider(double value, platform::Class cls) : Control(cls) {
  setValue(value);
}

void Slider::setValue(double value) {
  value_ = std::clamp(value, 0.0, 1.0);
}

bool Slider::handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) {
  const double track = bounds().size.width - kKnob;
  if (isEnabled() && track > 0 && phase != platform::UITouchPhase::Cancelled) {
    const double before = value_;
    setValue((touch.locationInView(ref()).x - bounds().minX() - kKnob / 2) / track);
    if (value_ != before) sendActions(ControlEvent::ValueChanged);
  }
  return Control::handleTouch(phase, touch);
}

void Slider::drawContent(Canvas& canvas) const {
  constexpr double kThickness = 4;
  const platform::CGRect own = bounds();
  const double x = own.minX() + kKnob / 2 + value_ * (own.size.width - kKnob);
  const double y = own.midY() - kThickness / 2;
  canvas.fill({{own.minX(), y}, {own.size.width, kThickness}}, colors::kLightGray, kThickness / 2);
  canvas.fill({{own.minX(), y}, {x - own.minX(), kThickness}}, colors::kBlue, kThickness / 2);
  const platform::CGRect thumb{{x - kKnob / 2, own.midY() - kKnob / 2}, {kKnob, kKnob}};
  canvas.fill(thumb, colors::kWhite, kKnob / 2);
  canvas.stroke(thumb, colors::kLightGray, 1, kKnob / 2);
}

}  // namespace tarni::headless
