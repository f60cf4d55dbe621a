#include "host/source/TextReader.h"

#include <algorithm>
#include <cctype>

#include "host/guard/Likeness.h"
#include "host/guard/Text.h"
#include "host/source/Attributes.h"
#include "host/source/SourceTree.h"

namespace tarni::host {

TextReader::TextReader(std::string_view text, std::string_view language)
    : text_(text), language_(language) {
  const auto null = text.find('\0');
  if (null == std::string_view::npos) return;
  at_ = null;
  fail("a null character");
}

char TextReader::next() {
  if (isAtEnd()) fail("it ends too soon");
  return text_[at_++];
}

bool TextReader::skipBlanks() {
  return !takeWhile([](unsigned char c) { return std::isspace(c) != 0; }).empty();
}

bool TextReader::take(std::string_view expected) {
  if (!text_.substr(at_).starts_with(expected)) return false;
  at_ += expected.size();
  return true;
}

bool TextReader::takeWord(std::string_view word) {
  const bool isIt = isSameInAnyCase(text_.substr(at_, word.size()), word);
  const auto behind = at_ + word.size();
  if (!isIt || (behind < text_.size() && isWordCharacter(text_[behind]))) return false;
  at_ = behind;
  return true;
}

void TextReader::need(std::string_view expected) {
  if (!take(expected)) fail("\"" + std::string(expected) + "\" is missing");
}

std::string TextReader::takeUntil(char end) {
  auto taken = takeWhile([end](char c) { return c != end; });
  need({&end, 1});
  return taken;
}

const std::string& TextReader::requireAttribute(const std::string& name) const {
  const auto known = attributeNames();
  if (std::ranges::find(known, name) != known.end()) return name;
  fail("no element has the attribute \"" + name + "\"; " + knownInsteadOf(name, known));
}

void TextReader::fail(const std::string& what) const {
  throw InvalidSelector("no " + std::string(language_) + " that is known here: " + what +
                        ", at character " + std::to_string(at_ + 1));
}

bool TextReader::isWordCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return std::isalnum(byte) != 0 || c == '_' || byte >= 0x80;
}

}  // namespace tarni::host
