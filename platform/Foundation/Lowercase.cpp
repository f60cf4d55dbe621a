#include "platform/Foundation/Lowercase.h"

#include <algorithm>
#include <cwchar>
#include <locale>
#include <stdexcept>

namespace tarni::platform {
namespace {

using Multibyte = std::codecvt<wchar_t, char, std::mbstate_t>;

// Knows the letters of all scripts where the machine has such a locale, else those of ASCII.
const std::locale& lettersLocale() {
  static const auto* const shared = [] {
    for (const char* name : {"C.UTF-8", "en_US.UTF-8"}) {
      try {
        return new std::locale(std::locale::classic(), name, std::locale::ctype);
      } catch (const std::runtime_error&) {
        continue;
      }
    }
    return new std::locale(std::locale::classic());
  }();
  return *shared;
}

// Empty when the text is none of the locale's.
std::wstring decode(std::string_view text) {
  const auto& multibyte = std::use_facet<Multibyte>(lettersLocale());
  std::wstring letters(text.size(), L'\0');
  std::mbstate_t state{};
  const char* consumed = nullptr;
  wchar_t* end = nullptr;
  const auto result = multibyte.in(state, text.data(), text.data() + text.size(), consumed,
                                   letters.data(), letters.data() + letters.size(), end);
  if (result != Multibyte::ok) return {};
  letters.resize(static_cast<std::size_t>(end - letters.data()));
  return letters;
}

std::string encode(const std::wstring& letters) {
  const auto& multibyte = std::use_facet<Multibyte>(lettersLocale());
  std::string text(letters.size() * static_cast<std::size_t>(multibyte.max_length()), '\0');
  std::mbstate_t state{};
  const wchar_t* consumed = nullptr;
  char* end = nullptr;
  multibyte.out(state, letters.data(), letters.data() + letters.size(), consumed, text.data(),
                text.data() + text.size(), end);
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

}  // namespace

std::string lowercase(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

std::string lowercaseString(std::string_view text) {
  const auto isAscii = [](char letter) { return static_cast<unsigned char>(letter) < 0x80; };
  if (std::ranges::all_of(text, isAscii)) return lowercase(text);

  std::wstring letters = decode(text);
  if (letters.empty()) return lowercase(text);  // it is not UTF-8
  std::use_facet<std::ctype<wchar_t>>(lettersLocale())
      .tolower(letters.data(), letters.data() + letters.size());
  return encode(letters);
}

}  // namespace tarni::platform
