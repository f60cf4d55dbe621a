// ElementTree: the tree that the elements of `tree.get` make: windows, and what stands in them.
// Walked without recursion, as trees may be very deep. Main thread.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class ElementTree {
 public:
  struct Node {
    const Json& element;
    std::size_t depth;        // 0 for a window
    std::string step;         // "UIButton[1]", its place among its siblings of that class
    std::string indentation;  // two blanks a level
    std::string position;     // the steps from its window down, for a person; "" for a window
  };
  using Visit = std::function<void(const Node&)>;

  // `elements` must live as long as this.
  explicit ElementTree(const Json& elements);

  // Parents before their children.
  void walk(const Visit& enter) const;

 private:
  std::vector<const Json*> childrenOf(const Json& element) const;

  std::vector<const Json*> windows_;
  std::map<long, std::vector<const Json*>> children_;
};

}  // namespace tarni::host
