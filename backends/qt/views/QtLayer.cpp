#include "backends/qt/views/QtLayer.h"

#include <algorithm>

#include "backends/qt/views/QtViewCore.h"

namespace tarni::qt {

void QtLayer::setBorderWidth(double width) {
  borderWidth_ = width;
  showBorder();
}

void QtLayer::setBorderColor(std::optional<platform::CGColor> color) {
  borderColor_ = color;
  showBorder();
}

bool QtLayer::isHidden() const {
  return view_.isHidden();
}

platform::CALayer* QtLayer::superlayer() const {
  const platform::UIViewRef above = view_.superview();
  return above ? &above->layer() : nullptr;
}

std::vector<platform::CALayer*> QtLayer::sublayers() const {
  std::vector<platform::CALayer*> layers;
  for (const platform::UIViewRef& view : view_.subviews()) layers.push_back(&view->layer());
  return layers;
}

void QtLayer::showBorder() {
  if (borderWidth_ <= 0) {
    border_.reset();
    return;
  }
  if (!border_) border_ = view_.makeBorder();
  if (border_)
    border_->setBorder(borderWidth_, borderColor_.value_or(platform::CGColor{0, 0, 0, 1}));
}

}  // namespace tarni::qt
