#include "host/source/XPathSelector.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "host/source/TextReader.h"

namespace tarni::host {

namespace {

struct KnownMember {
  std::string_view attribute;
  Selector::Member Selector::*member;
};

constexpr KnownMember kKnownMembers[] = {{"id", &Selector::identifier},
                                         {"label", &Selector::label},
                                         {"placeholder", &Selector::placeholder},
                                         {"text", &Selector::text},
                                         {"type", &Selector::className}};

class StepReader {
 public:
  explicit StepReader(const std::string& xpath) : reader_(xpath, "XPath") {}

  std::optional<Selector> whole() {
    reader_.take(".");
    const bool isKnown = reader_.take("//") && step() && reader_.isAtEnd();
    return isKnown && !selector_.isEmpty() ? std::optional(selector_) : std::nullopt;
  }

 private:
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
    const auto* const known = std::ranges::find(kKnownMembers, attribute, &KnownMember::attribute);
    if (known == std::end(kKnownMembers) || value.empty() || value.front() == '_') return false;
    auto& member = selector_.*(known->member);
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

}  // namespace tarni::host
