#include "host/stream/Jpeg.h"

#include <cstddef>
#include <vector>

#include "host/guard/Base64.h"

namespace tarni::host {

namespace {

std::vector<unsigned char> decoded(const std::string& base64) {
  const auto bytes = decodeBase64(base64);
  return {bytes.begin(), bytes.end()};
}

int word(const std::vector<unsigned char>& bytes, std::size_t at) {
  return bytes[at] << 8 | bytes[at + 1];
}

// A start-of-frame segment: C0 to CF but for C4, C8 and CC, which are tables.
bool beginsFrame(unsigned char marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

}  // namespace

std::optional<PixelSize> jpegSize(const std::string& base64) {
  const auto bytes = decoded(base64);
  constexpr std::size_t kSegmentWithSize = 9;
  std::size_t at = 2;  // behind the start of the image
  while (at + kSegmentWithSize <= bytes.size() && bytes[at] == 0xFF) {
    if (beginsFrame(bytes[at + 1])) return PixelSize{word(bytes, at + 7), word(bytes, at + 5)};
    at += 2 + static_cast<std::size_t>(word(bytes, at + 2));
  }
  return std::nullopt;
}

}  // namespace tarni::host
