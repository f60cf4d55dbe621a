#include "host/source/ClassChain.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <set>

#include "host/source/Predicate.h"
#include "host/source/TextReader.h"

namespace tarni::host {

namespace {

using Nodes = std::vector<pugi::xml_node>;

// All that are below it, in the order of the document.
Nodes below(const pugi::xml_node& top) {
  Nodes found;
  for (auto node = top.first_child(); node;) {
    found.push_back(node);
    auto next = node.first_child();
    for (; !next && node != top; node = node.parent()) next = node.next_sibling();
    if (node == top && !next) break;
    node = next;
  }
  return found;
}

Nodes children(const pugi::xml_node& top) {
  return {top.begin(), top.end()};
}

class Chain {
 public:
  Chain(const std::string& text, Nodes start)
      : reader_(text, "class chain"), nodes_(std::move(start)) {}

  Nodes walk() {
    do {
      step();
    } while (reader_.take("/"));
    if (!reader_.isAtEnd()) reader_.fail("something follows");
    return nodes_;
  }

 private:
  void step() {
    const bool isAnywhere = reader_.take("**/");
    const auto type = reader_.take("*") ? "" : className();
    Nodes found;
    std::set<pugi::xml_node> seen;
    for (const auto& node : nodes_) {
      for (const auto& candidate : isAnywhere ? below(node) : children(node)) {
        const bool isKind = type.empty() || type == candidate.attribute("type").value();
        if (isKind && seen.insert(candidate).second) found.push_back(candidate);
      }
    }
    nodes_ = std::move(found);
    while (reader_.take("[")) condition();
  }

  std::string className() {
    auto name = reader_.takeWhile([](char c) { return c != '/' && c != '['; });
    if (name.empty()) reader_.fail("a class or * is missing");
    return name;
  }

  void condition() {
    if (reader_.take("`")) {
      const auto predicate = parsePredicate(reader_.takeUntil('`'));
      std::erase_if(nodes_, [&](const auto& node) { return !predicate(node); });
    } else if (reader_.take("$")) {
      const auto predicate = parsePredicate(reader_.takeUntil('$'));
      std::erase_if(nodes_,
                    [&](const auto& node) { return std::ranges::none_of(below(node), predicate); });
    } else {
      pick();
    }
    reader_.need("]");
  }

  // From 1; -1 is the last one.
  void pick() {
    const auto digits =
        reader_.takeWhile([](unsigned char c) { return std::isdigit(c) != 0 || c == '-'; });
    const long wanted = std::strtol(digits.c_str(), nullptr, 10);
    if (wanted == 0) reader_.fail("a condition or a number from 1 is missing");
    const long count = static_cast<long>(nodes_.size());
    const long index = wanted > 0 ? wanted - 1 : count + wanted;
    nodes_ = index >= 0 && index < count ? Nodes{nodes_[static_cast<std::size_t>(index)]} : Nodes();
  }

  TextReader reader_;
  Nodes nodes_;
};

}  // namespace

std::vector<SourceTree::Handle> findByClassChain(const SourceTree& tree, const std::string& chain,
                                                 std::optional<SourceTree::Handle> within) {
  const auto start = within ? tree.node(within) : tree.node(within).first_child();
  std::vector<SourceTree::Handle> found;
  for (const auto& node : Chain(chain, {start}).walk()) {
    found.push_back(SourceTree::handleOf(node));
  }
  return found;
}

}  // namespace tarni::host
