#include "backends/headless/views/TextField.h"

#include <algorithm>
#include <functional>

#include "backends/headless/drawing/Canvas.h"
#include "platform/Foundation/Characters.h"

namespace tarni::headless {
namespace {

constexpr double kInset = 10;  // points

std::string dots(std::string_view text) {
  std::string hidden;
  for (auto count = std::ranges::count_if(text, std::not_fn(platform::isInsideCharacter));
       count > 0; --count) {
    hidden += "●";
  }
  return hidden;
}

}  // namespace

TextField::TextField(std::optional<std::string> placeholder, platform::Class cls)
    : Control(cls), placeholder_(std::move(placeholder)) {
  setCanBecomeFirstResponder(true);
  setBackgroundColor(colors::kWhite);
  layer().setCornerRadius(8);
}

platform::Task<void> TextField::setText(std::string text) {
  replaceText(std::move(text));
  co_return;
}

bool TextField::type(std::string_view text) {
  if (!isFirstResponder()) return false;
  replaceText(text_.append(text));
  sendActions(ControlEvent::EditingChanged);
  return true;
}

void TextField::tapped(platform::CGPoint) {
  focus();
}

void TextField::didBecomeFirstResponder() {
  sendActions(ControlEvent::EditingDidBegin);
}

void TextField::didResignFirstResponder() {
  sendActions(ControlEvent::EditingDidEnd);
}

void TextField::drawContent(Canvas& canvas) const {
  const platform::CGRect own = bounds();
  const platform::CGRect inner{{own.minX() + kInset, own.minY()},
                               {own.size.width - 2 * kInset, own.size.height}};
  TextStyle style;
  if (!text_.empty()) {
    canvas.text(secure_ ? dots(text_) : text_, inner, style);
  } else if (placeholder_) {
    style.color = colors::kLightGray;
    canvas.text(*placeholder_, inner, style);
  }
  const auto& line = isFirstResponder() ? colors::kBlue : colors::kLightGray;
  canvas.stroke(own, line, 1, layer().cornerRadius());
}

}  // namespace tarni::headless
