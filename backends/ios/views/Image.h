// Image: a UIImage. Any thread, as UIKit allows for pictures.
#pragma once

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Owned.h"
#include "platform/UIKit/UIImage.h"

namespace tarni::ios {

class Image : public platform::UIImage {
 public:
  // Draws the view and everything in it; null for a view without extent. Main thread.
  static platform::UIImageRef drawnFrom(::UIView* view);

  explicit Image(::UIImage* image) : image_(image) {}

  platform::CGSize size() const override;
  double scale() const override;
  platform::UIImageRef crop(const platform::CGRect& rect) const override;
  platform::UIImageRef blurred(std::span<const platform::CGRect> parts) const override;
  std::vector<std::byte> JPEGRepresentation(double quality) const override;

 private:
  Owned<::UIImage*> image_;
};

}  // namespace tarni::ios
