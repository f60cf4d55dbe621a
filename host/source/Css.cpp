#include "host/source/Css.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <vector>

#include "host/source/Attributes.h"
#include "host/source/TextReader.h"
#include "host/source/XPathLiteral.h"

namespace tarni::host {

namespace {

struct Condition {
  std::string attribute;
  char sign = '=';  // '\0' for one that must be there
  std::string value;
};

std::string inXPath(const Condition& condition) {
  const auto name = "@" + condition.attribute;
  const auto value = xpathLiteral(condition.value);
  switch (condition.sign) {
    case '\0':
      return name;
    case '^':
      return "starts-with(" + name + "," + value + ")";
    case '*':
      return "contains(" + name + "," + value + ")";
    case '$':
      return "substring(" + name + ",string-length(" + name + ")-string-length(" + value +
             ")+1)=" + value;
    case '~':
      return "contains(concat(' '," + name + ",' '),concat(' '," + value + ",' '))";
    default:
      return name + "=" + value;
  }
}

constexpr unsigned long kNoCharacter = 0xFFFD;  // what CSS reads in place of one

void appendUtf8(std::string& text, unsigned long point) {
  if (point < 0x80) {
    text += static_cast<char>(point);
    return;
  }
  const int more = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  const unsigned long lead = more == 1 ? 0xC0 : more == 2 ? 0xE0 : 0xF0;
  text += static_cast<char>(lead | (point >> (6 * more)));
  for (int left = more - 1; left >= 0; --left) {
    text += static_cast<char>(0x80 | ((point >> (6 * left)) & 0x3F));
  }
}

// The members of a selector that an attribute stands for: the first of them that any element has.
std::vector<Selector::Member Selector::*> membersFor(const std::string& attribute) {
  if (attribute == "name") return {&Selector::identifier, &Selector::label};
  if (attribute == "type") return {&Selector::className, &Selector::kind};
  const auto member = memberFor(attribute);
  return member ? std::vector{member} : std::vector<Selector::Member Selector::*>();
}

// Empty when selectors do not know what is asked for.
std::vector<Selector> asSelectors(const std::vector<Condition>& conditions) {
  std::vector<Selector> selectors(conditions.empty() ? 0 : 1);
  for (const auto& condition : conditions) {
    std::vector<Selector> more;
    const auto members = membersFor(condition.attribute);
    const bool isKnown = condition.sign == '=' && !members.empty();
    for (std::size_t at = 0; isKnown && at < selectors.size(); ++at) {
      for (const auto member : members) {
        if (selectors[at].*member) return {};  // asked for twice
        more.push_back(selectors[at]);
        more.back().*member = condition.value;
      }
    }
    selectors = std::move(more);
  }
  return selectors;
}

class Reader {
 public:
  explicit Reader(const std::string& text) : reader_(text, "CSS") {}

  Css whole() {
    Css css;
    do {
      reader_.skipBlanks();
      isOne_ = css.xpath.empty();
      css.xpath += (css.xpath.empty() ? "" : " | ") + complex();
    } while (reader_.take(","));
    if (!reader_.isAtEnd()) reader_.fail("something follows");
    if (isOne_) css.selectors = asSelectors(conditions_);
    return css;
  }

 private:
  std::string complex() {
    std::string xpath = ".//";
    while (true) {
      xpath += "*" + compound();
      const bool isBelow = reader_.skipBlanks();
      if (reader_.isAtEnd() || reader_.peek() == ',') return xpath;
      if (reader_.take(">")) {
        reader_.skipBlanks();
        xpath += "/";
      } else if (isBelow) {
        xpath += "//";
      } else {
        reader_.fail("that is not understood");
      }
      isOne_ = false;
    }
  }

  std::string compound() {
    std::string xpath;
    const bool isAny = reader_.take("*");
    if (!isAny && isNameNext()) xpath += put({"type", '=', className()});
    while (!reader_.isAtEnd()) {
      if (reader_.take("#")) {
        xpath += put({"id", '=', name()});
      } else if (reader_.take(".")) {
        xpath += put({"type", '=', className()});
      } else if (reader_.take("[")) {
        xpath += put(attribute());
      } else {
        break;
      }
    }
    if (xpath.empty() && !isAny) reader_.fail("an element is missing");
    return xpath;
  }

  std::string put(const Condition& condition) {
    conditions_.push_back(condition);
    return "[" + inXPath(condition) + "]";
  }

  Condition attribute() {
    reader_.skipBlanks();
    Condition condition{attributeName(), '\0', ""};
    reader_.skipBlanks();
    if (reader_.take("]")) return condition;
    condition.sign = reader_.next();
    if (condition.sign != '=') reader_.need("=");
    if (std::string_view("=^$*~").find(condition.sign) == std::string_view::npos) {
      reader_.fail("a comparison is missing");
    }
    reader_.skipBlanks();
    condition.value = value();
    reader_.skipBlanks();
    reader_.need("]");
    return condition;
  }

  std::string attributeName() {
    const std::string text = name();
    return text == "class" ? "type" : reader_.requireAttribute(text);
  }

  std::string value() {
    const char quote = reader_.peek();
    if (quote != '"' && quote != '\'') return name();
    reader_.next();
    std::string text;
    while (reader_.peek() != quote) {
      if (reader_.take("\\")) {
        escaped(text);
      } else {
        text += reader_.next();
      }
    }
    reader_.next();
    return text;
  }

  bool isNameNext() const {
    const char c = reader_.peek();
    return TextReader::isWordCharacter(c) || c == '-' || c == '\\';
  }

  std::string name() {
    std::string text;
    while (isNameNext()) {
      if (reader_.take("\\")) {
        escaped(text);
      } else {
        text += reader_.next();
      }
    }
    if (text.empty()) reader_.fail("a name is missing");
    return text;
  }

  // With its namespaces, which clients do not escape.
  std::string className() {
    std::string text = name();
    while (reader_.take("::")) text += "::" + name();
    return text;
  }

  // Up to six hexadecimal digits and a blank, or any one character.
  void escaped(std::string& text) {
    constexpr std::size_t kMostDigits = 6;
    std::size_t count = 0;
    const auto digits = reader_.takeWhile(
        [&count](unsigned char c) { return std::isxdigit(c) != 0 && count++ < kMostDigits; });
    if (digits.empty()) {
      text += reader_.next();
      return;
    }
    const auto point = std::strtoul(digits.c_str(), nullptr, 16);
    const bool isCharacter = point > 0 && point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
    appendUtf8(text, isCharacter ? point : kNoCharacter);
    reader_.take(" ");
  }

  TextReader reader_;
  std::vector<Condition> conditions_;
  bool isOne_ = true;  // element that is asked for
};

}  // namespace

Css Css::parse(const std::string& text) {
  return Reader(text).whole();
}

}  // namespace tarni::host
