#include "backends/headless/views/ImageView.h"

#include "backends/headless/drawing/Canvas.h"
#include "backends/headless/drawing/Image.h"

namespace tarni::headless {

ImageView::ImageView(std::shared_ptr<const Image> image)
    : View(platform::uikit::UIImageView), image_(std::move(image)) {
  setUserInteractionEnabled(false);
  if (image_) setFrame({{0, 0}, image_->size()});
}

void ImageView::drawContent(Canvas& canvas) const {
  if (image_) canvas.image(*image_, bounds());
}

}  // namespace tarni::headless
