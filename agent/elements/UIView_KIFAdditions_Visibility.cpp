#include "agent/elements/UIView_KIFAdditions_Visibility.h"

#include <span>
#include <utility>
#include <vector>

#include "agent/core/state/MainThread.h"

namespace tarni::KIFAdditions {

using platform::CGRect;
using platform::UIViewRef;

namespace {

CGRect frameInWindow(const UIViewRef& view) {
  return platform::convertRect(view->frame(), view->superview(), nullptr);
}

}  // namespace

bool isVisibleInViewHierarchy(const UIViewRef& view) {
  bool visible = true;
  performBlockOnAscendentViews(view, [&](const UIViewRef& current, bool& stop) {
    visible = !current->isHidden();
    stop = !visible;
  });
  return visible;
}

bool isVisibleInWindowFrame(const UIViewRef& view) {
  CGRect visible = frameInWindow(view);
  const platform::UIWindowRef window = view->window();
  performBlockOnAscendentViews(view, [&](const UIViewRef& current, bool& stop) {
    if (current->clipsToBounds()) {
      visible = platform::CGRectIntersection(visible, frameInWindow(current));
    }
    stop = visible.size == platform::CGSize{} || current->superview() == window;
  });
  return visible.size != platform::CGSize{};
}

void performBlockOnDescendentViews(const UIViewRef& view, const ViewBlock& block) {
  bool stop = false;
  performBlockOnDescendentViews(view, block, stop);
}

void performBlockOnDescendentViews(const UIViewRef& view, const ViewBlock& block, bool& stop) {
  assertMainThread();
  std::vector<UIViewRef> waiting{view};
  while (!waiting.empty() && !stop) {
    const UIViewRef current = std::move(waiting.back());
    waiting.pop_back();
    block(current, stop);
    const std::span<const UIViewRef> below = current->subviews();
    waiting.insert(waiting.end(), below.rbegin(), below.rend());
  }
}

void performBlockOnAscendentViews(const UIViewRef& view, const ViewBlock& block) {
  assertMainThread();
  bool stop = false;
  for (UIViewRef current = view; current && !stop; current = current->superview()) {
    block(current, stop);
  }
}

}  // namespace tarni::KIFAdditions
