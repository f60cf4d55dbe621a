#include "backends/headless/drawing/Image.h"

#include <cairo.h>
#include <turbojpeg.h>

#include <algorithm>
#include <cmath>

namespace tarni::headless {
namespace {

constexpr double kLargestSide = 32767;  // pixels, Cairo's limit

// Draws with the image's origin at (`x`, `y`) pixels.
void paint(cairo_surface_t* image, cairo_surface_t* onto, double x, double y) {
  cairo_t* const cairo = cairo_create(onto);
  cairo_set_source_surface(cairo, image, x, y);
  cairo_paint(cairo);
  cairo_destroy(cairo);
}

struct EncodedBytes {
  unsigned char* data = nullptr;
  unsigned long size = 0;
  ~EncodedBytes() { tjFree(data); }
};

}  // namespace

cairo_surface_t* makeSurface(platform::CGSize size, double scale) {
  const double width = std::round(size.width * scale);
  const double height = std::round(size.height * scale);
  const auto isDrawable = [](double side) { return side >= 1 && side <= kLargestSide; };
  if (!isDrawable(width) || !isDrawable(height)) return nullptr;
  cairo_surface_t* const surface = cairo_image_surface_create(
      CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(height));
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
    cairo_surface_destroy(surface);
    return nullptr;
  }
  cairo_t* const cairo = cairo_create(surface);
  cairo_set_source_rgb(cairo, 1, 1, 1);
  cairo_paint(cairo);
  cairo_destroy(cairo);
  return surface;
}

Image::Image(cairo_surface_t* surface, double scale) : surface_(surface), scale_(scale) {
  if (surface_) cairo_surface_flush(surface_);
}

Image::~Image() {
  if (surface_) cairo_surface_destroy(surface_);
}

std::shared_ptr<const Image> Image::filled(platform::CGSize size, double scale,
                                           const platform::CGColor& color) {
  cairo_surface_t* const surface = makeSurface(size, scale);
  if (surface) {
    cairo_t* const cairo = cairo_create(surface);
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
    cairo_paint(cairo);
    cairo_destroy(cairo);
  }
  return std::make_shared<const Image>(surface, scale);
}

platform::CGSize Image::size() const {
  if (!surface_) return {};
  return {cairo_image_surface_get_width(surface_) / scale_,
          cairo_image_surface_get_height(surface_) / scale_};
}

platform::UIImageRef Image::crop(const platform::CGRect& rect) const {
  const auto cropped = filled(rect.size, scale_, {0, 0, 0, 1});
  if (cropped->surface_ && surface_) {
    paint(surface_, cropped->surface_, std::round(-rect.origin.x * scale_),
          std::round(-rect.origin.y * scale_));
  }
  return cropped;
}

// In grey, so that how long a text is does not show either.
platform::UIImageRef Image::blurred(std::span<const platform::CGRect> parts) const {
  constexpr double kGrey = 0.8;
  cairo_surface_t* const surface = makeSurface(size(), scale_);
  if (!surface) return nullptr;
  paint(surface_, surface, 0, 0);
  cairo_t* const cairo = cairo_create(surface);
  cairo_scale(cairo, scale_, scale_);
  cairo_set_source_rgb(cairo, kGrey, kGrey, kGrey);
  for (const platform::CGRect& part : parts) {
    cairo_rectangle(cairo, part.minX(), part.minY(), part.size.width, part.size.height);
  }
  cairo_fill(cairo);
  cairo_destroy(cairo);
  return std::make_shared<Image>(surface, scale_);
}

std::vector<std::byte> Image::JPEGRepresentation(double quality) const {
  if (!surface_) return {};
  constexpr double kLargestQuality = 100;
  const int percent =
      static_cast<int>(std::lround(std::clamp(quality, 0.01, 1.0) * kLargestQuality));
  const std::unique_ptr<void, decltype(&tjDestroy)> encoder(tjInitCompress(), tjDestroy);
  EncodedBytes encoded;
  const int failure =
      tjCompress2(encoder.get(), cairo_image_surface_get_data(surface_),
                  cairo_image_surface_get_width(surface_), cairo_image_surface_get_stride(surface_),
                  cairo_image_surface_get_height(surface_), TJPF_BGRX, &encoded.data, &encoded.size,
                  TJSAMP_420, percent, TJFLAG_FASTDCT);
  if (failure != 0) return {};
  const auto* const bytes = reinterpret_cast<const std::byte*>(encoded.data);
  return {bytes, bytes + encoded.size};
}

std::vector<std::byte> Image::PNGRepresentation() const {
  std::vector<std::byte> encoded;
  const auto append = [](void* all, const unsigned char* data, unsigned int length) {
    const auto* const first = reinterpret_cast<const std::byte*>(data);
    auto& bytes = *static_cast<std::vector<std::byte>*>(all);
    bytes.insert(bytes.end(), first, first + length);
    return CAIRO_STATUS_SUCCESS;
  };
  if (surface_) cairo_surface_write_to_png_stream(surface_, append, &encoded);
  return encoded;
}

}  // namespace tarni::headless
