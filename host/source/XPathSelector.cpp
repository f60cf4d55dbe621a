#include "host/source/XPathSelector.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "host/source/Attributes.h"
#include "host/source/TextReader.h"

namespace tarni::host {

namespace {

class StepReader {
 public:
  explicit StepReader(const std::string& xpath) : reader_(xpath, "XPath") {}

  std::optional<Selector> whole() {
    reader_.take(".");
    const bool isKnown = reader_.take("//") && step() && reader_.isAtEnd();
    return isKnown && !selector_.isEmpty() ? std::optional(selector_) : std::nullopt;
  }

  // Elements of pages, whose classes are in capitals, have their number among the views.
  std::optional<NumberedSelector> numbered() {
    const bool isKnown = reader_.take("(//") && step() && reader_.take(")[");
    const auto digits = reader_.takeWhile(isDigit);
    if (!isKnown || !reader_.take("]") || !reader_.isAtEnd()) return std::nullopt;
    const auto& name = selector_.className;
    if (!name || std::ranges::none_of(*name, isSmall)) return std::nullopt;
    NumberedSelector numbered{selector_, 0};
    const auto* const end = digits.data() + digits.size();
    const bool fits = std::from_chars(digits.data(), end, numbered.number).ec == std::errc();
    return fits && numbered.number > 0 ? std::optional(numbered) : std::nullopt;
  }

 private:
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }
  static bool isSmall(char c) { return c >= 'a' && c <= 'z'; }

  bool step() {
    if (!reader_.take("*") && !put("type", name())) return false;
    while (reader_.take("[")) {
      do {
        if (!condition()) return false;
        reader_.skipBlanks();
      } while (reader_.takeWord("and"));
      if (!reader_.take("]")) return false;
    }
    return true;
  }

  bool condition() {
    reader_.skipBlanks();
    if (!reader_.take("@")) return false;
    const auto attribute = name();
    reader_.skipBlanks();
    if (!reader_.take("=")) return false;
    reader_.skipBlanks();
    const char quote = reader_.peek();
    if (quote != '\'' && quote != '"') return false;
    reader_.next();
    return put(attribute, reader_.takeUntil(quote));
  }

  // An empty text is also that of an element without one, and a tag that begins so may stand for a
  // class that XML cannot name.
  bool put(std::string_view attribute, std::string value) {
    if (attribute == "visible" && value == "true") {
      selector_.isVisible = true;
      return true;
    }
    const auto known = attribute == "type" ? &Selector::className : memberFor(attribute);
    if (!known || value.empty() || value.front() == '_') return false;
    auto& member = selector_.*known;
    const bool isNew = !member;
    member = std::move(value);
    return isNew;
  }

  std::string name() { return reader_.takeWhile(TextReader::isWordCharacter); }

  TextReader reader_;
  Selector selector_;
};

}  // namespace

std::optional<Selector> selectorIn(const std::string& xpath) {
  return StepReader(xpath).whole();
}

std::optional<NumberedSelector> numberedSelectorIn(const std::string& xpath) {
  return StepReader(xpath).numbered();
}

}  // namespace tarni::host
