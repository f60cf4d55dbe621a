#include <algorithm>
#include <array>
#include <cwchar>
#include <locale>
#include <stdexcept>

#include "agent/elements/Utilities.h"
#include "platform/ObjectiveC/Class.h"

namespace tarni {
namespace {

using Utf8 = std::codecvt<char32_t, char8_t, std::mbstate_t>;

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

std::u32string decode(std::u8string_view text) {
  const auto& utf8 = std::use_facet<Utf8>(std::locale::classic());
  std::u32string letters(text.size(), U'\0');
  std::mbstate_t state{};
  const char8_t* consumed = nullptr;
  char32_t* end = nullptr;
  const auto result = utf8.in(state, text.data(), text.data() + text.size(), consumed,
                              letters.data(), letters.data() + letters.size(), end);
  if (result != Utf8::ok) return {};
  letters.resize(static_cast<std::size_t>(end - letters.data()));
  return letters;
}

std::string encode(const std::u32string& letters) {
  const auto& utf8 = std::use_facet<Utf8>(std::locale::classic());
  std::u8string text(letters.size() * 4, u8'\0');
  std::mbstate_t state{};
  const char32_t* consumed = nullptr;
  char8_t* end = nullptr;
  utf8.out(state, letters.data(), letters.data() + letters.size(), consumed, text.data(),
           text.data() + text.size(), end);
  return {reinterpret_cast<const char*>(text.data()), reinterpret_cast<const char*>(end)};
}

}  // namespace

std::string Utilities::lowercaseString(std::string_view text) {
  const auto isAscii = [](char letter) { return static_cast<unsigned char>(letter) < 0x80; };
  if (std::ranges::all_of(text, isAscii)) return platform::lowercase(text);

  std::u32string letters = decode({reinterpret_cast<const char8_t*>(text.data()), text.size()});
  if (letters.empty()) return platform::lowercase(text);  // it is not UTF-8
  const auto& ctype = std::use_facet<std::ctype<wchar_t>>(lettersLocale());
  for (char32_t& letter : letters) {
    letter = static_cast<char32_t>(ctype.tolower(static_cast<wchar_t>(letter)));
  }
  return encode(letters);
}

}  // namespace tarni
