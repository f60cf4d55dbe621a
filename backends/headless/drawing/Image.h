// Image: a picture in memory, a Cairo surface. Any thread.
#pragma once

#include <memory>

#include "platform/UIKit/UIImage.h"

typedef struct _cairo_surface cairo_surface_t;  // NOLINT(modernize-use-using): Cairo's own

namespace tarni::headless {

class Image : public platform::UIImage {
 public:
  // Takes over the reference to the surface, of pixels without or with alpha. Null is an image
  // without pixels.
  Image(cairo_surface_t* surface, double scale);
  ~Image() override;
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  // A picture of one colour, `size` in points.
  static std::shared_ptr<const Image> filled(platform::CGSize size, double scale, double red,
                                             double green, double blue);

  platform::CGSize size() const override;
  double scale() const override { return scale_; }
  // What lies outside this image is white.
  platform::UIImageRef crop(const platform::CGRect& rect) const override;
  std::vector<std::byte> JPEGRepresentation(double quality) const override;

  cairo_surface_t* surface() const { return surface_; }

 private:
  cairo_surface_t* surface_;
  double scale_;
};

// A surface of white pixels; null when it is empty or too large. The caller owns it.
cairo_surface_t* makeSurface(platform::CGSize size, double scale);

}  // namespace tarni::headless
