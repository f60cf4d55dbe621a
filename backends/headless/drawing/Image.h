// Image: a picture in memory, on opaque pixels of a Cairo surface. Any thread.
#pragma once

#include <memory>

#include "platform/QuartzCore/CALayer.h"
#include "platform/UIKit/UIImage.h"

typedef struct _cairo_surface cairo_surface_t;  // NOLINT(modernize-use-using): Cairo's own

namespace tarni::headless {

class Image : public platform::UIImage {
 public:
  // Takes over the reference to a surface of makeSurface. Null is an image without pixels.
  Image(cairo_surface_t* surface, double scale);
  ~Image() override;
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  // One colour over white; `size` in points.
  static std::shared_ptr<const Image> filled(platform::CGSize size, double scale,
                                             const platform::CGColor& color);

  platform::CGSize size() const override;
  double scale() const override { return scale_; }
  // What lies outside this image is white.
  platform::UIImageRef crop(const platform::CGRect& rect) const override;
  platform::UIImageRef blurred(std::span<const platform::CGRect> parts) const override;
  std::vector<std::byte> JPEGRepresentation(double quality) const override;
  std::vector<std::byte> PNGRepresentation() const override;

  cairo_surface_t* surface() const { return surface_; }

 private:
  cairo_surface_t* surface_;
  double scale_;
};

// A surface of white pixels; `size` in points, `scale` in pixels a point. Null when it is empty or
// too large. The caller owns it.
cairo_surface_t* makeSurface(platform::CGSize size, double scale);

}  // namespace tarni::headless
