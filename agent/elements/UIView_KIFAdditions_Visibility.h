// UIView(KIFAdditions), where a view stands: whether any of it is on screen, and walks over views.
// Main thread. A view that has gone is not visible.
#pragma once

#include <functional>

#include "platform/UIKit/UIView.h"

namespace tarni::KIFAdditions {

// False when the view or one of its ancestors is hidden, whatever the frame.
bool isVisibleInViewHierarchy(const platform::UIViewRef& view);
// False when clipping ancestors leave nothing of the view; hidden ancestors do not count. A
// rectangle that is empty in one direction only counts as visible.
bool isVisibleInWindowFrame(const platform::UIViewRef& view);

// A block that is given a view and may set the flag to end the walk. It does not change the tree.
using ViewBlock = std::function<void(const platform::UIViewRef&, bool& stop)>;

// The view itself, then everything below it, parents before children.
void performBlockOnDescendentViews(const platform::UIViewRef& view, const ViewBlock& block);
void performBlockOnDescendentViews(const platform::UIViewRef& view, const ViewBlock& block,
                                   bool& stop);
// The view itself, then each of its ancestors outwards.
void performBlockOnAscendentViews(const platform::UIViewRef& view, const ViewBlock& block);

}  // namespace tarni::KIFAdditions
