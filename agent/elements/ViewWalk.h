// The one walk over a view tree that everything else is made of: pre-order, siblings back to front,
// iterative, with a view's index among its siblings of the same class name at hand. Main thread,
// and no wait in between: the views' own lists of subviews are read in place.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/UIKit/UIView.h"

namespace tarni {

// Counts siblings by class name, only as far as asked and each one once.
class SiblingCounter {
 public:
  void reset(std::span<const platform::UIViewRef> siblings) {
    siblings_ = siblings;
    if (counted_ > 0) counts_.clear();
    counted_ = 0;
  }
  // The index of the sibling at `position` among those of its class name. Positions ascend.
  long indexOf(std::size_t position) {
    for (; counted_ <= position; ++counted_) ++counts_[nameOf(counted_)];
    return counts_[nameOf(position)] - 1;
  }

 private:
  const std::string* nameOf(std::size_t position) const {
    return &siblings_[position]->getClass()->name();
  }

  std::span<const platform::UIViewRef> siblings_;
  std::size_t counted_ = 0;
  std::unordered_map<const std::string*, long> counts_;
};

using Children = std::span<const platform::UIViewRef> (platform::UIView::*)() const;

// One level of the path from the root of a walk to where it has come.
struct WalkLevel {
  const platform::UIViewRef* parent = nullptr;
  std::span<const platform::UIViewRef> siblings;  // the parent's children
  std::size_t next = 0;
  SiblingCounter counter;
};

// Memory that walks use again and again.
struct WalkBuffers {
  std::vector<WalkLevel> levels;
  std::vector<platform::UIViewRef> views;
};

// The view that a walk has come to.
struct WalkStep {
  const platform::UIViewRef& view;
  std::size_t position;       // among all siblings
  std::span<WalkLevel> path;  // from the root's level to the view's own

  const platform::UIViewRef& parent() const { return *path.back().parent; }
  // Among all siblings of the view's class name.
  long index() const { return path.back().counter.indexOf(position); }
};

// Calls `visit(step)` for every view below `root`; false leaves out what is below the view.
template <Children children, typename Visit>
void walk(const platform::UIViewRef& root, std::vector<WalkLevel>& levels, Visit&& visit) {
  if (!root) return;
  std::size_t depth = 0;
  const auto enter = [&](const platform::UIViewRef& parent) {
    const std::span<const platform::UIViewRef> siblings = (*parent.*children)();
    if (siblings.empty()) return;
    if (depth == levels.size()) levels.emplace_back();
    WalkLevel& level = levels[depth++];
    level.parent = &parent;
    level.siblings = siblings;
    level.next = 0;
    level.counter.reset(siblings);
  };
  enter(root);
  while (depth > 0) {
    WalkLevel& level = levels[depth - 1];
    if (level.next == level.siblings.size()) {
      --depth;
      continue;
    }
    const std::size_t position = level.next++;
    const platform::UIViewRef& view = level.siblings[position];
    if (visit(WalkStep{view, position, std::span(levels).first(depth)})) enter(view);
  }
}

template <typename Visit>
void walkSubviews(const platform::UIViewRef& root, std::vector<WalkLevel>& levels, Visit&& visit) {
  walk<&platform::UIView::subviews>(root, levels, std::forward<Visit>(visit));
}

// The same with what views draw themselves.
template <typename Visit>
void walkContents(const platform::UIViewRef& root, std::vector<WalkLevel>& levels, Visit&& visit) {
  walk<&platform::UIView::contents>(root, levels, std::forward<Visit>(visit));
}

}  // namespace tarni
