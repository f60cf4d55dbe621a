#include "backends/headless/views/Slider.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "backends/headless/drawing/Canvas.h"
#include "backends/headless/views/Refusal.h"

namespace tarni::headless {
namespace {

constexpr double kKnob = 28;  // points

}  // namespace

Slider::Slider(double value, platform::Class cls) : Control(cls) {
  setValue(value);
}

void Slider::setValue(double value) {
  setContent(value_, std::clamp(value, 0.0, 1.0));
}

std::string Slider::currentValue() const {
  std::ostringstream text;
  text << value_;
  return text.str();
}

platform::Task<void> Slider::chooseValue(std::string value) {
  double chosen = -1;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), chosen);
  const bool isNumber = error == std::errc() && end == value.data() + value.size();
  if (!isNumber || !(chosen >= 0 && chosen <= 1)) refuseValue(value, "a number from 0 to 1");
  setValue(chosen);
  sendActions(ControlEvent::ValueChanged);
  co_return;
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
