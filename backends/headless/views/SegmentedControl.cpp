#include "backends/headless/views/SegmentedControl.h"

#include <algorithm>

#include "backends/headless/drawing/Canvas.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/Refusal.h"
#include "platform/Foundation/NSException.h"

namespace tarni::headless {
namespace {

platform::Class segmentClass() {
  return platform::defineClass("UISegment", platform::uikit::UIImageView);
}

platform::Class segmentLabelClass() {
  return platform::defineClass("UISegmentLabel", platform::uikit::UILabel);
}

[[noreturn]] void throwOutOfRange(long index) {
  throw platform::NSException(platform::NSRangeException,
                              "segment " + std::to_string(index) + " does not exist");
}

}  // namespace

SegmentedControl::SegmentedControl(std::vector<std::optional<std::string>> titles,
                                   platform::Class cls)
    : Control(cls), titles_(std::move(titles)) {
  layer().setCornerRadius(8);
  for (const auto& title : titles_) {
    const auto segment = std::make_shared<View>(segmentClass());
    segment->setUserInteractionEnabled(false);
    const auto label = std::make_shared<Label>(title, segmentLabelClass());
    label->setTextStyle({.size = 13, .alignment = TextAlignment::Center});
    segment->addSubview(label);
    addSubview(segment);
  }
}

std::optional<std::string> SegmentedControl::titleForSegmentAtIndex(long index) const {
  if (index < 0 || index >= numberOfSegments()) throwOutOfRange(index);
  return titles_[static_cast<std::size_t>(index)];
}

void SegmentedControl::select(long index) {
  if (index < -1 || index >= numberOfSegments()) throwOutOfRange(index);
  setContent(selected_, index);
}

std::string SegmentedControl::currentValue() const {
  if (selected_ < 0) return {};
  return titles_[static_cast<std::size_t>(selected_)].value_or("");
}

std::vector<std::string> SegmentedControl::choices() const {
  std::vector<std::string> choices;
  for (const auto& known : titles_) choices.push_back(known.value_or(""));
  return choices;
}

std::optional<std::size_t> SegmentedControl::chosenPlace() const {
  return selected_ < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(selected_));
}

platform::Task<void> SegmentedControl::chooseValue(std::string value) {
  const auto title = std::ranges::find(titles_, std::optional(value));
  if (title == titles_.end()) refuseValue(value, choices());
  select(title - titles_.begin());
  sendActions(ControlEvent::ValueChanged);
  co_return;
}

void SegmentedControl::tapped(platform::CGPoint point) {
  for (std::size_t index = 0; index < titles_.size(); ++index) {
    if (!child(index).frame().contains(point) || selected_ == static_cast<long>(index)) continue;
    select(static_cast<long>(index));
    sendActions(ControlEvent::ValueChanged);
    return;
  }
}

void SegmentedControl::layoutSubviews() {
  const platform::CGSize size = bounds().size;
  const double width = size.width / static_cast<double>(titles_.size());
  for (std::size_t index = 0; index < titles_.size(); ++index) {
    child(index).setFrame({{width * static_cast<double>(index), 0}, {width, size.height}});
    child(index).child(0).setFrame({{0, 0}, {width, size.height}});
  }
}

void SegmentedControl::drawContent(Canvas& canvas) const {
  constexpr double kInset = 2;
  const double radius = layer().cornerRadius();
  canvas.fill(bounds(), colors::kLightGray, radius);
  if (selected_ < 0) return;
  const platform::CGRect chosen = child(static_cast<std::size_t>(selected_)).frame();
  canvas.fill({{chosen.minX() + kInset, chosen.minY() + kInset},
               {chosen.size.width - 2 * kInset, chosen.size.height - 2 * kInset}},
              colors::kWhite, radius - kInset);
}

}  // namespace tarni::headless
