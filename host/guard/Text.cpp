#include "host/guard/Text.h"

#include <algorithm>
#include <cctype>

namespace tarni::host {

std::string lowerCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

bool isSameInAnyCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, [](unsigned char a, unsigned char b) {
    return std::tolower(a) == std::tolower(b);
  });
}

bool beginsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::vector<std::string> charactersOf(std::string_view text) {
  std::vector<std::string> characters;
  for (const char byte : text) {
    if (characters.empty() || beginsCharacter(byte)) characters.emplace_back();
    characters.back() += byte;
  }
  return characters;
}

std::string asMarkup(std::string_view text) {
  std::string markup;
  markup.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        markup += "&amp;";
        break;
      case '<':
        markup += "&lt;";
        break;
      case '>':
        markup += "&gt;";
        break;
      case '"':
        markup += "&quot;";
        break;
      case '\'':
        markup += "&#39;";
        break;
      default:
        markup += c;
    }
  }
  return markup;
}

}  // namespace tarni::host
