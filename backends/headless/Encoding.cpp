#include "backends/headless/Encoding.h"

#include <glib.h>

#include <algorithm>
#include <memory>

namespace tarni::headless {
namespace {

using Text = std::unique_ptr<char, decltype(&g_free)>;

}  // namespace

std::string Encoding::UUIDString() const {
  const Text text(g_uuid_string_random(), g_free);
  std::string upper(text.get());
  std::ranges::transform(upper, upper.begin(), g_ascii_toupper);
  return upper;
}

std::string Encoding::base64EncodedString(std::span<const std::byte> data) const {
  if (data.empty()) return {};
  const Text text(g_base64_encode(reinterpret_cast<const guchar*>(data.data()), data.size()),
                  g_free);
  return text.get();
}

}  // namespace tarni::headless
