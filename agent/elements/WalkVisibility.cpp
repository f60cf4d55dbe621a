#include "agent/elements/WalkVisibility.h"

namespace tarni {

using platform::CGRect;
using platform::UIViewRef;

bool WalkVisibility::isVisibleInWindowFrame(const WalkStep& step) {
  const Surroundings& surroundings = surroundingsOf(step);
  // What stands in a page that is not open need not be asked where.
  if (showsNothing(surroundings)) return false;
  const CGRect frame = frameInWindow(step.view, surroundings);
  if (!surroundings.clip) return frame.size != platform::CGSize{};
  return platform::CGRectIntersection(frame, *surroundings.clip).size != platform::CGSize{};
}

bool WalkVisibility::showsNothing(const Surroundings& surroundings) {
  return surroundings.clip && surroundings.clip->size == platform::CGSize{};
}

CGRect WalkVisibility::frameInWindow(const UIViewRef& view, const Surroundings& outer) {
  CGRect frame = view->frame();
  if (!outer.isMovedOnly) return platform::convertRect(frame, view->superview(), nullptr);
  frame.origin.x += outer.origin.x;
  frame.origin.y += outer.origin.y;
  return frame;
}

WalkVisibility::Surroundings WalkVisibility::inside(const Surroundings& outer,
                                                    const UIViewRef& parent) {
  Surroundings inner = outer;
  inner.parent = parent.get();
  if (showsNothing(outer)) return inner;
  // The window itself clips nothing. It is the topmost of all, and the coordinates are its own.
  if (!outer.parent && parent == parent->window()) return inner;
  inner.isMovedOnly = outer.isMovedOnly && parent->transform().isIdentity();
  if (outer.parent) {
    const platform::CGPoint shift = parent->frame().origin;
    const platform::CGPoint scrolled = parent->bounds().origin;
    inner.origin.x += shift.x - scrolled.x;
    inner.origin.y += shift.y - scrolled.y;
  }
  if (parent->clipsToBounds()) {
    const CGRect frame = frameInWindow(parent, outer);
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
