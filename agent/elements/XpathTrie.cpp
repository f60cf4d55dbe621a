#include "agent/elements/XpathTrie.h"

#include <charconv>

namespace tarni {

XpathTrie::XpathTrie() : steps_(1), places_(64, kRoot) {}

std::string XpathTrie::Step::text() const {
  return '\\' + *name + '[' + std::to_string(index) + ']';
}

void XpathTrie::file(Node prefix, platform::Class cls, long index, platform::Guid guid,
                     bool takesOver) {
  const std::string* const name = &cls->name();
  const auto position = static_cast<std::uint32_t>(index);
  Node node = child(prefix, name, position);
  if (node == kRoot) node = add(prefix, name, position);
  if (filed_.size() <= guid.number()) filed_.resize(guid.number() + 1, kRoot);
  filed_[guid.number()] = node;
  platform::Guid& owner = steps_[node].guid;
  if (!owner) ++count_;
  if (!owner || takesOver) owner = guid;
}

std::optional<XpathTrie::Node> XpathTrie::nodeOfGuid(platform::Guid guid) const {
  const Node node = guid.number() < filed_.size() ? filed_[guid.number()] : kRoot;
  return node == kRoot ? std::nullopt : std::optional(node);
}

std::string XpathTrie::text(Node node) const {
  std::vector<Node> path;
  for (Node step = node; step != kRoot; step = steps_[step].prefix) path.push_back(step);
  std::string xpath;
  for (auto step = path.rbegin(); step != path.rend(); ++step) xpath += steps_[*step].text();
  return xpath;
}

bool XpathTrie::isText(Node node, std::string_view xpath) const {
  for (; node != kRoot; node = steps_[node].prefix) {
    const std::string step = steps_[node].text();
    if (!xpath.ends_with(step)) return false;
    xpath.remove_suffix(step.size());
  }
  return xpath.empty();
}

std::optional<platform::Guid> XpathTrie::objectForKey(std::string_view xpath) const {
  const std::optional<Node> node = find(xpath);
  if (!node || !steps_[*node].guid) return std::nullopt;
  return steps_[*node].guid;
}

std::optional<XpathTrie::Node> XpathTrie::find(std::string_view xpath) const {
  std::optional<Node> node = kRoot;
  while (node && !xpath.empty()) {
    if (xpath.front() != '\\') return std::nullopt;
    xpath.remove_prefix(1);
    const std::string_view step = xpath.substr(0, xpath.find('\\'));
    node = child(*node, step);
    xpath.remove_prefix(step.size());
  }
  return node;
}

std::optional<XpathTrie::Node> XpathTrie::child(Node prefix, std::string_view step) const {
  const std::size_t bracket = step.rfind('[');
  if (bracket == std::string_view::npos || step.back() != ']') return std::nullopt;
  const std::string_view number = step.substr(bracket + 1, step.size() - bracket - 2);
  std::uint32_t index = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), index);
  // Only the text that would be written for the index names the step.
  const bool isExact = error == std::errc() && std::to_string(index) == number;
  const platform::Class cls = platform::NSClassFromString(step.substr(0, bracket));
  if (!isExact || !cls) return std::nullopt;
  const Node found = child(prefix, &cls->name(), index);
  return found == kRoot ? std::nullopt : std::optional(found);
}

// ------------------------------------------------------------------ steps by what they are below

XpathTrie::Node XpathTrie::child(Node prefix, const std::string* name, std::uint32_t index) const {
  Node node = places_[placeOf(prefix, name, index)];
  while (node != kRoot) {
    const Step& step = steps_[node];
    if (step.prefix == prefix && step.name == name && step.index == index) break;
    node = step.nextInPlace;
  }
  return node;
}

std::size_t XpathTrie::placeOf(Node prefix, const std::string* name, std::uint32_t index) const {
  constexpr std::size_t kSpread = 0x9E3779B97F4A7C15;
  std::size_t hash = std::hash<const std::string*>{}(name);
  hash = (hash ^ prefix) * kSpread;
  hash = ((hash >> 32) ^ hash ^ index) * kSpread;
  return (hash >> 32) & (places_.size() - 1);
}

XpathTrie::Node XpathTrie::add(Node prefix, const std::string* name, std::uint32_t index) {
  if (steps_.size() > places_.size()) spread();
  Node& first = places_[placeOf(prefix, name, index)];
  steps_.push_back({name, prefix, index, {}, first});
  first = static_cast<Node>(steps_.size() - 1);
  return first;
}

void XpathTrie::spread() {
  places_.assign(places_.size() * 2, kRoot);
  for (Node node = 1; node < steps_.size(); ++node) {
    Step& step = steps_[node];
    Node& first = places_[placeOf(step.prefix, step.name, step.index)];
    step.nextInPlace = first;
    first = node;
  }
}

}  // namespace tarni
