#include "agent/session/protocol/JsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarni::session {

void JsonText::write(std::string_view value) {
  const auto isPlain = [](char letter) {
    return letter >= 0x20 && letter < 0x7F && letter != '"' && letter != '\\';
  };
  if (std::ranges::all_of(value, isPlain)) {
    text_.append("\"").append(value).append("\"");
  } else {
    text_ += jsonText(Json(value));
  }
}

void JsonText::write(long value) {
  std::array<char, 24> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  text_.append(digits.data(), end);
}

// The library's own digits: `to_chars` knows no fractions on the oldest supported systems.
void JsonText::write(double value) {
  if (!std::isfinite(value)) {
    text_ += "null";
    return;
  }
  constexpr double kMostWhole = 1e9;
  if (std::abs(value) < kMostWhole && std::trunc(value) == value) {
    write(static_cast<long>(value));
    text_ += ".0";
    return;
  }
  std::array<char, 64> digits;
  text_.append(digits.data(),
               nlohmann::detail::to_chars(digits.data(), digits.data() + digits.size(), value));
}

}  // namespace tarni::session
