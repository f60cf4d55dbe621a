#include "agent/interaction/ScreenSurvey.h"

#include <algorithm>

#include "agent/elements/ViewWalk.h"
#include "agent/elements/WalkVisibility.h"
#include "agent/interaction/UIView_KIFAdditions.h"

namespace tarni {

using platform::UIViewRef;

ScreenSurvey::ScreenSurvey(const UIViewRef& root) {
  if (!root) return;
  const auto add = [this](const UIViewRef& view, std::size_t parent, bool inHierarchy,
                          bool inFrame) {
    const std::size_t number = places_.size();
    numbers_.emplace(view.get(), number);
    places_.push_back({number, parent, number + 1, inHierarchy, inFrame});
  };
  add(root, 0, KIFAdditions::isVisibleInViewHierarchy(root),
      KIFAdditions::isVisibleInWindowFrame(root));
  WalkVisibility visibility;
  std::vector<WalkLevel> levels;
  walkSubviews(root, levels, [&](const WalkStep& step) {
    // What is listed here but stands elsewhere is asked by itself.
    if (step.view->superview() != step.parent()) return false;
    const Place& parent = *placeOf(step.parent());
    add(step.view, parent.number, parent.isVisibleInViewHierarchy && !step.view->isHidden(),
        visibility.isVisibleInWindowFrame(step));
    return true;
  });
  for (auto place = places_.rbegin(); place != places_.rend(); ++place) {
    Place& parent = places_[place->parent];
    parent.end = std::max(parent.end, place->end);
  }
}

bool ScreenSurvey::isVisibleInViewHierarchy(const UIViewRef& view) const {
  const Place* const place = placeOf(view);
  return place ? place->isVisibleInViewHierarchy : KIFAdditions::isVisibleInViewHierarchy(view);
}

bool ScreenSurvey::isVisibleInWindowFrame(const UIViewRef& view) const {
  const Place* const place = placeOf(view);
  return place ? place->isVisibleInWindowFrame : KIFAdditions::isVisibleInWindowFrame(view);
}

bool ScreenSurvey::isProbablyTappable(const UIViewRef& view) const {
  return KIFAdditions::isProbablyTappable(view,
                                          [this](const UIViewRef& inner, const UIViewRef& outer) {
                                            return isDescendantOfView(inner, outer);
                                          });
}

const ScreenSurvey::Place* ScreenSurvey::placeOf(const UIViewRef& view) const {
  const auto found = numbers_.find(view.get());
  return found == numbers_.end() ? nullptr : &places_[found->second];
}

bool ScreenSurvey::isDescendantOfView(const UIViewRef& view, const UIViewRef& ancestor) const {
  const Place* const inner = placeOf(view);
  const Place* const outer = placeOf(ancestor);
  if (!inner || !outer) return platform::isDescendantOfView(view, ancestor);
  return outer->number <= inner->number && inner->number < outer->end;
}

}  // namespace tarni
