#include "agent/elements/XpathTrie.h"

#include <algorithm>
#include <charconv>

namespace tarni {
namespace {

std::size_t digits(long index) {
  return std::to_string(index).size();
}

}  // namespace

XpathTrie::XpathTrie() {
  steps_.emplace_back();
}

std::size_t XpathTrie::KeyHash::operator()(const Key& key) const {
  constexpr std::size_t kSpread = 0x9E3779B97F4A7C15;
  std::size_t hash = std::hash<const std::string*>{}(key.name);
  hash = (hash ^ key.prefix) * kSpread;
  return ((hash >> 32) ^ hash ^ static_cast<std::size_t>(key.index)) * kSpread;
}

void XpathTrie::file(Node prefix, platform::Class cls, long index, const std::string& guid,
                     bool takesOver) {
  const std::string* const name = &cls->name();
  const auto [child, isNew] =
      children_.try_emplace(Key{prefix, name, index}, static_cast<Node>(steps_.size()));
  const Node node = child->second;
  if (isNew) {
    const std::size_t stepLength = 1 + name->size() + 1 + digits(index) + 1;
    steps_.push_back({prefix, name, index, steps_[prefix].length + stepLength, nullptr});
  }
  const auto filed = guids_.insert_or_assign(guid, node).first;
  if (!steps_[node].guid) ++count_;
  if (!steps_[node].guid || takesOver) steps_[node].guid = &filed->first;
}

std::optional<XpathTrie::Node> XpathTrie::nodeOfGuid(std::string_view guid) const {
  const auto found = guids_.find(guid);
  return found == guids_.end() ? std::nullopt : std::optional(found->second);
}

std::string XpathTrie::text(Node node) const {
  std::vector<Node> path;
  for (Node step = node; step != kRoot; step = steps_[step].prefix) path.push_back(step);
  std::string xpath;
  xpath.reserve(steps_[node].length);
  for (auto step = path.rbegin(); step != path.rend(); ++step) {
    xpath += '\\';
    xpath += *steps_[*step].name;
    xpath += '[';
    xpath += std::to_string(steps_[*step].index);
    xpath += ']';
  }
  return xpath;
}

std::optional<std::string> XpathTrie::objectForKey(std::string_view xpath) const {
  const std::optional<Node> node = find(xpath);
  if (!node || !steps_[*node].guid) return std::nullopt;
  return *steps_[*node].guid;
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
  long index = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), index);
  // Only the text that would be written for the index names the step.
  const bool isExact = error == std::errc() && std::to_string(index) == number;
  const platform::Class cls = platform::NSClassFromString(step.substr(0, bracket));
  if (!isExact || !cls) return std::nullopt;
  const auto found = children_.find(Key{prefix, &cls->name(), index});
  return found == children_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace tarni
