#include "host/session_client/Selector.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

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
    {"windowTitle", &Selector::windowTitle},
};
constexpr std::string_view kVisible = "visible";

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  for (auto at = text.find(separator); at != std::string_view::npos; at = text.find(separator)) {
    parts.push_back(text.substr(0, at));
    text.remove_prefix(at + separator.size());
  }
  parts.push_back(text);
  return parts;
}

void take(Selector& selector, std::string_view part) {
  const auto sign = part.find('=');
  const auto name = part.substr(0, sign);
  const auto value = sign == std::string_view::npos ? "" : part.substr(sign + 1);
  if (sign != std::string_view::npos && name == kVisible) {
    selector.isVisible = value == "true";
    return;
  }
  const auto* const found = std::ranges::find(kMembers, name, &MemberName::name);
  if (sign == std::string_view::npos || found == std::end(kMembers)) {
    selector.text = part;
    return;
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
  for (const auto part : split(text, kAnd)) take(selector, part);
  const auto isSaid = [&selector](const MemberName& member) {
    const auto& value = selector.*member.member;
    return value && !value->empty();
  };
  if (!selector.isVisible && std::ranges::none_of(kMembers, isSaid)) {
    throw std::invalid_argument("\"" + std::string(text) + "\" says nothing of an element");
  }
  return selector;
}

std::string Selector::written() const {
  std::string text;
  const auto add = [&text](std::string_view name, std::string_view value) {
    if (!text.empty()) text += kAnd;
    text.append(name).append("=").append(value);
  };
  for (const auto& [name, member] : kMembers) {
    if (this->*member) add(name, *(this->*member));
  }
  if (isVisible) add(kVisible, *isVisible ? "true" : "false");
  return text;
}

Json Selector::parameters() const {
  Json members = Json::object();
  for (const auto& [name, member] : kMembers) {
    if (this->*member) members[std::string(name)] = *(this->*member);
  }
  if (isVisible) members[std::string(kVisible)] = *isVisible;
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
  const auto visible = parameters.find(kVisible);
  if (visible != parameters.end() && visible->is_boolean()) {
    selector.isVisible = visible->get<bool>();
  }
  return selector;
}

std::string withBackslashes(std::string position) {
  if (position.starts_with('/')) std::ranges::replace(position, '/', '\\');
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
