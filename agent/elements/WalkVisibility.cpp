#include "agent/elements/WalkVisibility.h"

namespace tarni {

using platform::CGRect;
using platform::UIViewRef;

namespace {

CGRect frameInWindow(const UIViewRef& view) {
  return platform::convertRect(view->frame(), view->superview(), nullptr);
}

}  // namespace

bool WalkVisibility::isVisibleInWindowFrame(const WalkStep& step) {
  const Surroundings& surroundings = surroundingsOf(step);
  const platform::CGSize nothing;
  if (!surroundings.clip && surroundings.isMovedOnly) return step.view->frame().size != nothing;
  const CGRect frame = frameInWindow(step.view);
  if (!surroundings.clip) return frame.size != nothing;
  return platform::CGRectIntersection(frame, *surroundings.clip).size != nothing;
}

WalkVisibility::Surroundings WalkVisibility::inside(const Surroundings& outer,
                                                    const UIViewRef& parent) {
  Surroundings inner;
  inner.parent = parent.get();
  if (parent == parent->window()) return inner;  // the window itself clips nothing
  inner.isMovedOnly = outer.isMovedOnly && parent->transform().isIdentity();
  inner.clip = outer.clip;
  if (parent->clipsToBounds()) {
    const CGRect frame = frameInWindow(parent);
    inner.clip = outer.clip ? platform::CGRectIntersection(frame, *outer.clip) : frame;
  }
  return inner;
}

// Of everything outside the root of the walk.
WalkVisibility::Surroundings WalkVisibility::above(const UIViewRef& root) {
  std::vector<UIViewRef> ancestors;
  for (UIViewRef view = root->superview(); view; view = view->superview()) {
    ancestors.push_back(view);
  }
  Surroundings surroundings;
  for (auto ancestor = ancestors.rbegin(); ancestor != ancestors.rend(); ++ancestor) {
    surroundings = inside(surroundings, *ancestor);
  }
  return surroundings;
}

// Keeps what is known of the path's beginning and works out the rest.
const WalkVisibility::Surroundings& WalkVisibility::surroundingsOf(const WalkStep& step) {
  while (!levels_.empty() &&
         (levels_.size() > step.path.size() ||
          levels_.back().parent != step.path[levels_.size() - 1].parent->get())) {
    levels_.pop_back();
  }
  if (levels_.empty()) {
    const UIViewRef& root = *step.path.front().parent;
    levels_.push_back(inside(above(root), root));
  }
  while (levels_.size() < step.path.size()) {
    levels_.push_back(inside(levels_.back(), *step.path[levels_.size()].parent));
  }
  return levels_.back();
}

}  // namespace tarni
