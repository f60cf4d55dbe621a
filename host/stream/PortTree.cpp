#include "host/stream/PortTree.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

constexpr std::size_t kDeepestPath = 100;
constexpr std::size_t kStepsOfALongPath = 5;
constexpr std::size_t kDeepestIndentation = 40;

}  // namespace

void PortTree::goTo(const Json& description) {
  while (!path_.empty() && path_.back().childrenToCome == 0) path_.pop_back();
  auto& parent = path_.empty() ? window_ : path_.back();
  --parent.childrenToCome;
  const auto name = textIn(description, "elementType");
  const auto place = parent.seenOfClass[name]++;
  const auto children = std::max(0.0, numberOfText(description, "childCount"));
  path_.push_back({name + "[" + std::to_string(place) + "]", static_cast<long>(children)});
}

std::optional<std::string> PortTree::xpath() const {
  if (path_.size() > kDeepestPath) return std::nullopt;
  return stepsFrom(0);
}

std::string PortTree::position() const {
  const auto whole = xpath();
  return printable(whole ? *whole : "…" + stepsFrom(path_.size() - kStepsOfALongPath));
}

std::string PortTree::indentation() const {
  const auto blanks = std::string(2 * std::min(depth(), kDeepestIndentation), ' ');
  return depth() <= kDeepestIndentation ? blanks : blanks + "(" + std::to_string(depth()) + ") ";
}

std::string PortTree::stepsFrom(std::size_t level) const {
  std::string steps;
  for (; level < path_.size(); ++level) steps += "\\" + path_[level].step;
  return steps;
}

}  // namespace tarni::host
