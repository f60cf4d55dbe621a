// A picture, immutable once made. Any thread; encoding may run beside the main thread.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "platform/QuartzCore/CGGeometry.h"

namespace tarni::platform {

class UIImage;
using UIImageRef = std::shared_ptr<const UIImage>;

class UIImage {
 public:
  virtual ~UIImage() = default;
  // Points; pixels are size times scale.
  virtual CGSize size() const = 0;
  virtual double scale() const = 0;
  // A new image of the rectangle's size at this image's scale, with this image drawn at the
  // rectangle's negated origin: what lies outside this image stays empty.
  virtual UIImageRef crop(const CGRect& rect) const = 0;
  // A new image with grey in place of what these rectangles show, from which nothing of it can be
  // made out, nor how long it is. Null where the platform cannot.
  virtual UIImageRef blurred(std::span<const CGRect> /*parts*/) const { return nullptr; }
  // JPEG bytes, quality from 0 to 1; empty for an image without pixels.
  virtual std::vector<std::byte> JPEGRepresentation(double quality) const = 0;
  // PNG bytes, nothing lost; empty for an image without pixels and where the platform has no
  // encoder.
  virtual std::vector<std::byte> PNGRepresentation() const { return {}; }
};

}  // namespace tarni::platform
