#include "host/cli/ElementTree.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "host/cli/Elements.h"
#include "host/stream/PortTree.h"

namespace tarni::host {

namespace {

std::optional<long> numberAt(const Json& element, const char* member) {
  const auto found = element.find(member);
  const bool isNumber = found != element.end() && found->is_number_integer();
  return isNumber ? std::optional(found->get<long>()) : std::nullopt;
}

bool comesBefore(const Json* one, const Json* other) {
  return numberAt(*one, "index").value_or(0) < numberAt(*other, "index").value_or(0);
}

}  // namespace

ElementTree::ElementTree(const Json& elements) {
  std::set<long> known;  // only what came before has children: nothing stands in itself
  for (const auto& element : elements) {
    const auto parent = numberAt(element, "parent");
    if (parent && known.contains(*parent)) {
      children_[*parent].push_back(&element);
    } else {
      windows_.push_back(&element);
    }
    if (const auto handle = numberAt(element, "element")) known.insert(*handle);
  }
  for (auto& [handle, children] : children_) std::ranges::stable_sort(children, comesBefore);
}

std::vector<const Json*> ElementTree::childrenOf(const Json& element) const {
  const auto handle = numberAt(element, "element");
  const auto found = handle ? children_.find(*handle) : children_.end();
  return found != children_.end() ? found->second : std::vector<const Json*>();
}

namespace {

struct Open {
  Open(ElementTree::Node its, std::vector<const Json*> below)
      : node(std::move(its)), children(std::move(below)) {}

  ElementTree::Node node;
  std::vector<const Json*> children;
  std::size_t next = 0;
};

}  // namespace

void ElementTree::walk(const Visit& enter) const {
  for (const auto* const window : windows_) {
    PortTree positions;
    std::vector<Open> open;
    open.emplace_back(Node{*window, 0, valueIn(*window, "class").value_or("?"), "", ""},
                      childrenOf(*window));
    enter(open.back().node);
    while (!open.empty()) {
      auto& last = open.back();
      if (last.next == last.children.size()) {
        open.pop_back();
        continue;
      }
      const Json& child = *last.children[last.next++];
      auto below = childrenOf(child);
      positions.goTo({{"elementType", valueIn(child, "class").value_or("?")},
                      {"childCount", std::to_string(below.size())}});
      open.emplace_back(Node{child, open.size(), positions.step(), "  " + positions.indentation(),
                             positions.position()},
                        std::move(below));
      enter(open.back().node);
    }
  }
}

}  // namespace tarni::host
