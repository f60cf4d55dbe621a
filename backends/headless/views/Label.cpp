#include "backends/headless/views/Label.h"

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {

Label::Label(std::optional<std::string> text, platform::Class cls)
    : View(cls), text_(std::move(text)) {
  setUserInteractionEnabled(false);
}

void Label::drawContent(Canvas& canvas) const {
  if (text_) canvas.text(*text_, bounds(), style_);
}

}  // namespace tarni::headless
