// ViewTree: the view tree, put together again from the agent's element descriptions. These come
// parent first, siblings in order, each with the number of its children, and so fix the tree. A
// plain value; nothing here recurses, as trees may be very deep.
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace tarni::host {

struct ViewTreeNode {
  std::size_t depth = 0;
  std::string step;   // "UIButton[1]": class and place among the siblings of that class
  std::string xpath;  // the steps from the window down, each behind a backslash
};

// One node for each description, in their order.
std::vector<ViewTreeNode> viewTree(const nlohmann::ordered_json& descriptions);

}  // namespace tarni::host
