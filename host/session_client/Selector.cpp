#include "host/session_client/Selector.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <utility>

#include "host/guard/Likeness.h"
#include "host/session_client/SessionClient.h"

namespace tarni::host {

namespace {

constexpr std::string_view kAnd = " && ";
constexpr std::string_view kInside = " >> ";

struct MemberName {
  std::string_view name;
  Selector::Member Selector::*member;
};

constexpr MemberName kMembers[] = {
    {"identifier", &Selector::identifier},
    {"label", &Selector::label},
    {"text", &Selector::text},
    {"textContains", &Selector::textContains},
    {"placeholder", &Selector::placeholder},
    {"class", &Selector::className},
    {"kind", &Selector::kind},
    {"xpath", &Selector::xpath},
    {"group", &Selector::group},
    {"windowTitle", &Selector::windowTitle},
};

struct FlagName {
  std::string_view name;
  std::optional<bool> Selector::*flag;
};

constexpr FlagName kFlags[] = {
    {"visible", &Selector::isVisible},
    {"focused", &Selector::isFocused},
    {"selected", &Selector::isSelected},
};

std::vector<std::string_view> allNames() {
  std::vector<std::string_view> names;
  for (const auto& member : kMembers) names.push_back(member.name);
  for (const auto& flag : kFlags) names.push_back(flag.name);
  return names;
}

// As misspelt ones do; a text with a sign "=" may begin so, too.
bool looksLikeMember(std::string_view name) {
  const auto isLetter = [](unsigned char c) { return std::isalpha(c) != 0; };
  return !name.empty() && std::ranges::all_of(name, isLetter);
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  for (auto at = text.find(separator); at != std::string_view::npos; at = text.find(separator)) {
    parts.push_back(text.substr(0, at));
    text.remove_prefix(at + separator.size());
  }
  parts.push_back(text);
  return parts;
}

// What separates may stand in a value, too: it has a backslash there.
constexpr std::pair<std::string_view, std::string_view> kEscapes[] = {{kAnd, " \\&& "},
                                                                      {kInside, " \\>> "}};

std::string replaced(std::string text, std::string_view old, std::string_view by) {
  for (auto at = text.find(old); at != std::string::npos; at = text.find(old, at + by.size())) {
    text.replace(at, old.size(), by);
  }
  return text;
}

std::string escaped(std::string value) {
  for (const auto& [plain, written] : kEscapes) value = replaced(std::move(value), plain, written);
  return value;
}

std::string unescaped(std::string_view part) {
  std::string value(part);
  for (const auto& [plain, written] : kEscapes) value = replaced(std::move(value), written, plain);
  return value;
}

void take(Selector& selector, const std::string& part) {
  const auto sign = part.find('=');
  const auto name = part.substr(0, sign);
  const auto value = sign == std::string::npos ? "" : part.substr(sign + 1);
  if (sign == std::string::npos || !looksLikeMember(name)) {
    selector.text = part;
    return;
  }
  const auto* const flag = std::ranges::find(kFlags, name, &FlagName::name);
  if (flag != std::end(kFlags)) {
    if (value != "true" && value != "false") {
      throw std::invalid_argument("\"" + name + "\" of an element is true or false, not \"" +
                                  value + "\"");
    }
    selector.*flag->flag = value == "true";
    return;
  }
  const auto* const found = std::ranges::find(kMembers, name, &MemberName::name);
  if (found == std::end(kMembers)) {
    throw std::invalid_argument("no element has \"" + name + "\"; " +
                                knownInsteadOf(name, allNames()) +
                                ". A text that begins so is written text=" + part);
  }
  selector.*found->member = value;
  if (name == "xpath") selector.xpath = withBackslashes(*selector.xpath);
}

std::vector<Json> elementsIn(Json result) {
  const auto found = result.find("elements");
  if (found == result.end() || !found->is_array()) return {};
  std::vector<Json> elements;
  for (auto& element : *found) elements.push_back(std::move(element));
  return elements;
}

std::optional<long> handleIn(const Json& description) {
  const auto found = description.find("element");
  const bool isHandle = found != description.end() && found->is_number_integer();
  return isHandle ? std::optional(found->get<long>()) : std::nullopt;
}

}  // namespace

Selector Selector::parse(std::string_view text) {
  Selector selector;
  for (const auto part : split(text, kAnd)) take(selector, unescaped(part));
  const auto isSaid = [&selector](const MemberName& member) {
    const auto& value = selector.*member.member;
    return value && !value->empty();
  };
  const auto isSet = [&selector](const FlagName& name) {
    return (selector.*name.flag).has_value();
  };
  if (std::ranges::none_of(kFlags, isSet) && std::ranges::none_of(kMembers, isSaid)) {
    throw std::invalid_argument("\"" + std::string(text) + "\" says nothing of an element");
  }
  return selector;
}

std::string Selector::written() const {
  std::string text;
  const auto add = [&text](std::string_view name, std::string_view value) {
    if (!text.empty()) text += kAnd;
    text.append(name).append("=").append(escaped(std::string(value)));
  };
  for (const auto& [name, member] : kMembers) {
    if (this->*member) add(name, *(this->*member));
  }
  for (const auto& [name, flag] : kFlags) {
    if (this->*flag) add(name, *(this->*flag) ? "true" : "false");
  }
  return text;
}

Json Selector::parameters() const {
  Json members = Json::object();
  for (const auto& [name, member] : kMembers) {
    if (this->*member) members[std::string(name)] = *(this->*member);
  }
  for (const auto& [name, flag] : kFlags) {
    if (this->*flag) members[std::string(name)] = *(this->*flag);
  }
  return members;
}

Selector Selector::fromParameters(const Json& parameters) {
  Selector selector;
  for (const auto& [name, member] : kMembers) {
    const auto found = parameters.find(name);
    if (found != parameters.end() && found->is_string()) {
      selector.*member = found->get<std::string>();
    }
  }
  for (const auto& [name, flag] : kFlags) {
    const auto found = parameters.find(name);
    if (found != parameters.end() && found->is_boolean()) selector.*flag = found->get<bool>();
  }
  return selector;
}

void Selector::require(const Json& parameters) {
  for (const auto& [name, value] : parameters.items()) {
    const bool isText = std::ranges::find(kMembers, name, &MemberName::name) != std::end(kMembers);
    const bool isFlag = std::ranges::find(kFlags, name, &FlagName::name) != std::end(kFlags);
    if (!isText && !isFlag) {
      throw std::invalid_argument("no locator has \"" + name + "\"; " +
                                  knownInsteadOf(name, allNames()));
    }
    if (isText ? value.is_string() : value.is_boolean()) continue;
    throw std::invalid_argument("\"" + name + "\" of a locator is " +
                                (isText ? "no text" : "neither true nor false"));
  }
  const auto position = parameters.find("xpath");
  if (position == parameters.end() || position->get<std::string>().starts_with('\\')) return;
  throw std::invalid_argument(compact(*position) + " is no position like \\UIView[0]\\UIButton[1]");
}

std::string withBackslashes(std::string position) {
  // Two slashes begin what only XPath itself knows.
  const bool isPosition = position.starts_with('/') && !position.starts_with("//");
  if (isPosition) std::ranges::replace(position, '/', '\\');
  return position;
}

SelectorChain parseChain(std::string_view text) {
  SelectorChain chain;
  for (const auto part : split(text, kInside)) chain.push_back(Selector::parse(part));
  return chain;
}

std::string written(const SelectorChain& chain) {
  std::string text;
  for (const auto& selector : chain) {
    if (!text.empty()) text += kInside;
    text += selector.written();
  }
  return text;
}

std::vector<Json> findAll(SessionClient& client, const SelectorChain& chain,
                          std::optional<long> within) {
  std::vector<std::optional<long>> parents{within};
  std::vector<Json> found;
  for (const auto& selector : chain) {
    found.clear();
    std::set<long> seen;
    for (const auto parent : parents) {
      auto parameters = selector.parameters();
      if (parent) parameters["within"] = *parent;
      for (auto& element : elementsIn(client.call("element.find", std::move(parameters)))) {
        const auto handle = handleIn(element);
        if (handle && seen.insert(*handle).second) found.push_back(std::move(element));
      }
    }
    parents.clear();
    for (const auto& element : found) parents.push_back(handleIn(element));
  }
  return found;
}

}  // namespace tarni::host
