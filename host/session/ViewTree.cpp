#include "host/session/ViewTree.h"

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "host/session/RecordedStep.h"

namespace tarni::host {

namespace {

struct Parent {
  std::string xpath;
  long childrenToCome = 0;
  std::unordered_map<std::string, std::size_t> seenOfClass;
};

}  // namespace

std::vector<ViewTreeNode> viewTree(const nlohmann::ordered_json& descriptions) {
  std::vector<ViewTreeNode> nodes;
  nodes.reserve(descriptions.size());
  std::vector<Parent> parents(1);  // the window, whose number of children nobody tells
  for (const auto& description : descriptions) {
    while (parents.size() > 1 && parents.back().childrenToCome == 0) parents.pop_back();
    auto& parent = parents.back();
    --parent.childrenToCome;
    const auto name = textIn(description, "elementType");
    ViewTreeNode node;
    node.depth = parents.size() - 1;
    node.step = name + "[" + std::to_string(parent.seenOfClass[name]++) + "]";
    node.xpath = parent.xpath + "\\" + node.step;
    const auto children = std::strtol(textIn(description, "childCount").c_str(), nullptr, 10);
    parents.push_back({node.xpath, children, {}});
    nodes.push_back(std::move(node));
  }
  return nodes;
}

}  // namespace tarni::host
