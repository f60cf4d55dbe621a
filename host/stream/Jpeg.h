// The size of a JPEG picture, read from its header. Plain values, any thread.
#pragma once

#include <optional>
#include <string>

namespace tarni::host {

struct PixelSize {
  int width = 0;
  int height = 0;
};

// Null when the text is not base-64 of a JPEG.
std::optional<PixelSize> jpegSize(const std::string& base64);

}  // namespace tarni::host
