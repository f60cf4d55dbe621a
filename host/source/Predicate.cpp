#include "host/source/Predicate.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <optional>
#include <regex>
#include <string_view>
#include <vector>

#include "host/guard/Text.h"
#include "host/source/TextReader.h"

namespace tarni::host {

namespace {

using Value = std::optional<std::string>;  // null for nil, and for an attribute that is not there
using Compare = bool (*)(const Value& one, const Value& other);

// Truth values are numbers to those who write predicates.
Value normal(Value value, bool ignoresCase) {
  if (!value) return value;
  if (ignoresCase) return lowerCase(*std::move(value));
  if (value == "true" || value == "YES" || value == "TRUE") return "1";
  if (value == "false" || value == "NO" || value == "FALSE") return "0";
  return value;
}

double numberOf(const Value& value) {
  return value ? std::strtod(value->c_str(), nullptr) : 0;
}

bool matches(const Value& text, const std::string& pattern) {
  constexpr std::size_t kLongest = 10'000;  // the library looks by recursion
  return text && text->size() <= kLongest && std::regex_match(*text, std::regex(pattern));
}

std::string patternOfLike(const std::string& text) {
  std::string pattern;
  for (const char c : text) {
    if (c == '*') {
      pattern += ".*";
    } else if (c == '?') {
      pattern += '.';
    } else {
      if (std::ispunct(static_cast<unsigned char>(c)) != 0) pattern += '\\';
      pattern += c;
    }
  }
  return pattern;
}

struct Operator {
  std::string_view name;
  Compare compare;
};

// Longer ones before those that they begin with.
constexpr Operator kSigns[] = {
    {"==", [](auto& a, auto& b) { return a == b; }},
    {"!=", [](auto& a, auto& b) { return a != b; }},
    {"<>", [](auto& a, auto& b) { return a != b; }},
    {">=", [](auto& a, auto& b) { return a && numberOf(a) >= numberOf(b); }},
    {"=>", [](auto& a, auto& b) { return a && numberOf(a) >= numberOf(b); }},
    {"<=", [](auto& a, auto& b) { return a && numberOf(a) <= numberOf(b); }},
    {"=<", [](auto& a, auto& b) { return a && numberOf(a) <= numberOf(b); }},
    {"=", [](auto& a, auto& b) { return a == b; }},
    {">", [](auto& a, auto& b) { return a && numberOf(a) > numberOf(b); }},
    {"<", [](auto& a, auto& b) { return a && numberOf(a) < numberOf(b); }},
};
constexpr Operator kWords[] = {
    {"CONTAINS", [](auto& a, auto& b) { return a && b && a->find(*b) != std::string::npos; }},
    {"BEGINSWITH", [](auto& a, auto& b) { return a && b && a->starts_with(*b); }},
    {"ENDSWITH", [](auto& a, auto& b) { return a && b && a->ends_with(*b); }},
    {"LIKE", [](auto& a, auto& b) { return b && matches(a, patternOfLike(*b)); }},
    {"MATCHES", [](auto& a, auto& b) { return b && matches(a, *b); }},
};

std::string attributeNamed(const std::string& name) {
  if (name == "identifier") return "id";
  if (name == "class" || name == "elementType") return "type";
  if (name == "displayed" || name == "isVisible" || name == "hittable") return "visible";
  if (name == "hasFocus") return "focused";
  if (name == "isEnabled") return "enabled";
  if (name == "isSelected") return "selected";
  if (name == "placeholderValue") return "placeholder";
  return name;
}

Value valueIn(const pugi::xml_node& node, const std::string& attribute) {
  const auto found = node.attribute(attribute.c_str());
  return found ? Value(found.value()) : std::nullopt;
}

class Parser {
 public:
  explicit Parser(const std::string& text) : reader_(text, "predicate") {}

  Predicate whole() {
    auto predicate = any();
    reader_.skipBlanks();
    if (!reader_.isAtEnd()) reader_.fail("something follows");
    return predicate;
  }

 private:
  bool isNext(std::string_view word, std::string_view sign) {
    reader_.skipBlanks();
    return reader_.takeWord(word) || reader_.take(sign);
  }

  Predicate any() {
    auto first = all();
    while (isNext("OR", "||")) {
      first = [first, second = all()](const auto& node) { return first(node) || second(node); };
    }
    return first;
  }

  Predicate all() {
    auto first = one();
    while (isNext("AND", "&&")) {
      first = [first, second = one()](const auto& node) { return first(node) && second(node); };
    }
    return first;
  }

  Predicate one() {
    constexpr int kDeepest = 100;
    if (++depth_ > kDeepest) reader_.fail("it is nested too deep");
    auto predicate = oneOfThese();
    --depth_;
    return predicate;
  }

  Predicate oneOfThese() {
    if (isNext("NOT", "!")) {
      return [inner = one()](const auto& node) { return !inner(node); };
    }
    if (reader_.takeWord("TRUEPREDICATE")) return [](const auto&) { return true; };
    if (reader_.take("(")) {
      auto inner = any();
      reader_.skipBlanks();
      reader_.need(")");
      return inner;
    }
    return comparison();
  }

  Predicate comparison() {
    auto name = reader_.takeWhile(TextReader::isWordCharacter);
    if (name.empty()) reader_.fail("the name of an attribute is missing");
    name = reader_.requireAttribute(attributeNamed(name));
    reader_.skipBlanks();
    if (reader_.takeWord("IN")) return isAnyOf(name);
    const auto compare = comparing();
    const bool ignoresCase = takesAnyCase();
    const auto wanted = normal(value(), ignoresCase);
    if (compare == kWords[4].compare) checkPattern(wanted);
    return
        [=](const auto& node) { return compare(normal(valueIn(node, name), ignoresCase), wanted); };
  }

  Predicate isAnyOf(const std::string& name) {
    const bool ignoresCase = takesAnyCase();
    reader_.skipBlanks();
    reader_.need("{");
    std::vector<Value> wanted;
    do {
      wanted.push_back(normal(value(), ignoresCase));
      reader_.skipBlanks();
    } while (reader_.take(","));
    reader_.need("}");
    return [=](const auto& node) {
      const auto own = normal(valueIn(node, name), ignoresCase);
      return own && std::ranges::find(wanted, own) != wanted.end();
    };
  }

  Compare comparing() {
    for (const auto& [sign, compare] : kSigns) {
      if (reader_.take(sign)) return compare;
    }
    for (const auto& [word, compare] : kWords) {
      if (reader_.takeWord(word)) return compare;
    }
    reader_.fail("a comparison is missing");
  }

  // "[cd]": in any case; accents count.
  bool takesAnyCase() {
    if (!reader_.take("[")) return false;
    const auto letters = reader_.takeUntil(']');
    return letters.find('c') != std::string::npos;
  }

  Value value() {
    reader_.skipBlanks();
    for (const char quote : {'"', '\''}) {
      if (reader_.take({&quote, 1})) return quoted(quote);
    }
    if (reader_.takeWord("nil") || reader_.takeWord("NULL")) return std::nullopt;
    auto word = reader_.takeWhile(
        [](char c) { return TextReader::isWordCharacter(c) || c == '.' || c == '-'; });
    if (word.empty()) reader_.fail("a value is missing");
    return word;
  }

  std::string quoted(char quote) {
    std::string text;
    while (reader_.peek() != quote) {
      reader_.take("\\");
      text += reader_.next();
    }
    reader_.next();
    return text;
  }

  void checkPattern(const Value& pattern) const {
    try {
      if (pattern) const std::regex compiled(*pattern);
    } catch (const std::regex_error& error) {
      reader_.fail(error.what());
    }
  }

  TextReader reader_;
  int depth_ = 0;
};

}  // namespace

Predicate parsePredicate(const std::string& text) {
  return Parser(text).whole();
}

}  // namespace tarni::host
