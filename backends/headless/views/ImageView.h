// ImageView: a UIImageView. It takes no touches. Main thread.
#pragma once

#include <memory>

#include "backends/headless/View.h"

namespace tarni::headless {

class Image;

class ImageView : public View {
 public:
  // A null image shows nothing.
  explicit ImageView(std::shared_ptr<const Image> image = nullptr);

  const std::shared_ptr<const Image>& image() const { return image_; }
  void setImage(std::shared_ptr<const Image> image) { image_ = std::move(image); }

  // The image fills the bounds.
  void drawContent(Canvas& canvas) const override;

 private:
  std::shared_ptr<const Image> image_;
};

}  // namespace tarni::headless
