// TextReader: reads what a person wrote from its beginning to its end, for the small languages in
// which elements are looked for. Plain value.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarni::host {

class TextReader {
 public:
  // `language` is what the text should be, "CSS", for messages. The text must live as long.
  // Throws InvalidSelector for one with a null character, which is the end here.
  TextReader(std::string_view text, std::string_view language);

  bool isAtEnd() const { return at_ == text_.size(); }
  // Null at the end.
  char peek() const { return isAtEnd() ? '\0' : text_[at_]; }
  char next();
  // Whether there was any.
  bool skipBlanks();
  // Whether that is next; it is skipped then.
  bool take(std::string_view expected);
  // The same of a word, in any case, which no letter follows.
  bool takeWord(std::string_view word);
  void need(std::string_view expected);
  // As long as the characters fulfil the condition.
  template <typename Condition>
  std::string takeWhile(Condition condition) {
    const auto begin = at_;
    while (!isAtEnd() && condition(text_[at_])) ++at_;
    return std::string(text_.substr(begin, at_ - begin));
  }
  // Up to `end`, which is skipped, too.
  std::string takeUntil(char end);
  // The name of an attribute, once elements have it. Throws InvalidSelector otherwise.
  const std::string& requireAttribute(const std::string& name) const;
  // Throws InvalidSelector: what is wrong, and where.
  [[noreturn]] void fail(const std::string& what) const;

  static bool isWordCharacter(char c);

 private:
  std::string_view text_;
  std::string_view language_;
  std::size_t at_ = 0;
};

}  // namespace tarni::host
