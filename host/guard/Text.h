// Text: letters, characters and numbers of it. Plain values, any thread.
#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tarni::host {

// The letters of ASCII; the others stay as they are.
std::string lowerCase(std::string text);
bool isSameInAnyCase(std::string_view one, std::string_view other);

// Of UTF-8: false for a byte within a character.
bool beginsCharacter(char byte);
// The characters of UTF-8.
std::vector<std::string> charactersOf(std::string_view text);

// As text and attributes of XML and HTML have it.
std::string asMarkup(std::string_view text);

// The number that the text is, whole and in decimal; null when it is none, or a larger one.
template <std::integral Number>
std::optional<Number> wholeNumberIn(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole ? std::optional(number) : std::nullopt;
}

}  // namespace tarni::host
