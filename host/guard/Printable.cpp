#include "host/guard/Printable.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iomanip>
#include <sstream>

#include "host/guard/Text.h"

namespace tarni::host {

namespace {

constexpr char32_t kNoCharacter = 0xFFFFFFFF;
constexpr auto kReplacement = "\uFFFD";

struct Character {
  std::size_t bytes = 1;
  char32_t code = kNoCharacter;  // when the bytes are not UTF-8
};

// 0 for a byte that no character of UTF-8 begins with.
std::size_t lengthAfter(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

bool isCharacter(char32_t code, std::size_t bytes) {
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (bytes == 3) return code >= 0x800 && !isSurrogate;
  return bytes != 4 || (code >= 0x10000 && code <= 0x10FFFF);
}

// The first of the text, which is not empty.
Character firstOf(std::string_view text) {
  const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const auto length = lengthAfter(byte(0));
  if (length == 1) return {1, byte(0)};
  char32_t code = byte(0) & (0xFFU >> (length + 1));
  for (std::size_t at = 1; at < length; ++at) {
    if (at == text.size() || beginsCharacter(text[at])) return {at};
    code = code << 6U | (byte(at) & 0x3FU);
  }
  return length > 0 && isCharacter(code, length) ? Character{length, code} : Character{};
}

// What a terminal may obey instead of showing it, or what hides the order of the letters.
bool steers(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code <= 0x9F) || (code >= 0x2028 && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

void asItIs(std::string& result, std::string_view bytes, char32_t) {
  result += bytes;
}

void asInJson(std::string& result, std::string_view, char32_t code) {
  if (code == '\n') {
    result += "\\n";
  } else if (code == '\r') {
    result += "\\r";
  } else if (code == '\t') {
    result += "\\t";
  } else {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned>(code));
    result += text.data();
  }
}

void asInShell(std::string& result, std::string_view bytes, char32_t) {
  for (const char byte : bytes) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "\\%03o", static_cast<unsigned char>(byte));
    result += text.data();
  }
}

// Writes the text anew: by `escape` what steers, by `keep` the rest, both given the character as
// its bytes and its code.
template <typename Escape, typename Keep>
std::string rewritten(std::string_view text, const Escape& escape, const Keep& keep) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const auto [size, code] = firstOf(text);
    const auto bytes = text.substr(0, size);
    text.remove_prefix(size);
    if (code == kNoCharacter) {
      result += kReplacement;
    } else if (steers(code)) {
      escape(result, bytes, code);
    } else {
      keep(result, bytes, code);
    }
  }
  return result;
}

// With a backslash before each of `special`.
auto withBackslashBefore(std::string_view special) {
  return [special](std::string& result, std::string_view bytes, char32_t) {
    if (special.find(bytes) != std::string_view::npos) result += '\\';
    result += bytes;
  };
}

}  // namespace

std::string printable(std::string_view text) {
  return rewritten(text, asInJson, asItIs);
}

std::string printableLines(std::string_view text) {
  const auto escape = [](std::string& result, std::string_view bytes, char32_t code) {
    if (code == '\n' || code == '\t') {
      result += bytes;
    } else {
      asInJson(result, bytes, code);
    }
  };
  return rewritten(text, escape, asItIs);
}

std::string printableJson(std::string_view json) {
  const auto escape = [](std::string& result, std::string_view bytes, char32_t code) {
    // Unescaped, JSON has these between its values only.
    if (code == '\n' || code == '\r' || code == '\t') {
      result += ' ';
    } else {
      asInJson(result, bytes, code);
    }
  };
  return rewritten(json, escape, asItIs);
}

std::string inQuotes(std::string_view text) {
  return '"' + rewritten(text, asInJson, withBackslashBefore("\"\\")) + '"';
}

std::string quotedForShell(std::string_view text) {
  if (printable(text) != text) {
    return "$'" + rewritten(text, asInShell, withBackslashBefore("'\\")) + "'";
  }
  const auto keep = [](std::string& result, std::string_view bytes, char32_t) {
    result += bytes == "'" ? "'\\''" : bytes;
  };
  return "'" + rewritten(text, asInShell, keep) + "'";
}

std::size_t wholeCharacters(std::string_view text) {
  constexpr std::size_t kLongestStart = 3;
  for (std::size_t back = 1; back <= std::min(kLongestStart, text.size()); ++back) {
    const char byte = text[text.size() - back];
    if (!beginsCharacter(byte)) continue;
    const auto length = lengthAfter(static_cast<unsigned char>(byte));
    return length > back ? text.size() - back : text.size();
  }
  return text.size();
}

std::string counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string inSeconds(double seconds) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << seconds << " s";
  return text.str();
}

}  // namespace tarni::host
