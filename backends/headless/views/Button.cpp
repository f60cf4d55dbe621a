#include "backends/headless/views/Button.h"

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {
namespace {

platform::Class titleLabelClass() {
  return platform::defineClass("UIButtonLabel", platform::uikit::UILabel);
}

}  // namespace

Button::Button(std::optional<std::string> title, platform::Class cls) : Control(cls) {
  style_.color = colors::kBlue;
  style_.alignment = TextAlignment::Center;
  setTitle(std::move(title));
}

void Button::setTitle(std::optional<std::string> title) {
  setContent(title_, std::move(title));
  if (!label_ && title_) {
    label_ = std::make_shared<Label>(std::nullopt, titleLabelClass());
    label_->setTextStyle(style_);
    addSubview(label_);
    layoutSubviews();
  }
  if (label_) label_->setText(title_);
}

void Button::setTitleStyle(const TextStyle& style) {
  style_ = style;
  if (label_) label_->setTextStyle(style);
}

void Button::layoutSubviews() {
  if (label_) label_->setFrame(bounds());
}

void Button::drawContent(Canvas& canvas) const {
  constexpr platform::CGColor kShade{0, 0, 0, 0.1};
  if (isHighlighted()) canvas.fill(bounds(), kShade, layer().cornerRadius());
}

}  // namespace tarni::headless
