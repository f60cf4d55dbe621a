#include "backends/headless/views/TextView.h"

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {

TextView::TextView(std::string text, platform::Class cls)
    : ScrollView(cls), text_(std::move(text)) {
  setCanBecomeFirstResponder(true);
  setBackgroundColor(colors::kWhite);
}

bool TextView::type(std::string_view text) {
  if (!isFirstResponder()) return false;
  setText(text_.append(text));
  return true;
}

bool TextView::handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) {
  if (phase == platform::UITouchPhase::Ended && pointInside(touch.locationInView(ref()))) focus();
  return true;
}

void TextView::drawContent(Canvas& canvas) const {
  constexpr double kInset = 8;
  const platform::CGSize size = bounds().size;
  canvas.paragraph(text_, {{kInset, kInset}, {size.width - 2 * kInset, size.height - 2 * kInset}},
                   {});
}

}  // namespace tarni::headless
