#include "backends/qt/views/QtLayer.h"

#include <algorithm>

#include "backends/qt/views/QtViewCore.h"

namespace tarni::qt {

void QtLayer::setBorderWidth(double width) {
  more().borderWidth = width;
  showBorder();
}

void QtLayer::setBorderColor(std::optional<platform::CGColor> color) {
  more().borderColor = color;
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

QtLayer::More& QtLayer::more() {
  if (!more_) more_ = std::make_unique<More>();
  return *more_;
}

void QtLayer::showBorder() {
  const double width = more().borderWidth;
  std::unique_ptr<QtBorder>& border = more().border;
  if (width <= 0) {
    border.reset();
    return;
  }
  if (!border) border = view_.makeBorder();
  if (border) border->setBorder(width, borderColor().value_or(platform::CGColor{0, 0, 0, 1}));
}

}  // namespace tarni::qt
