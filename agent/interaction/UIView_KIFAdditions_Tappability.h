// UIView(KIFAdditions), the questions: whether a view could take a touch, whether any of it is on
// screen, and walks over views. Main thread. A view that has gone is neither tappable nor visible.
#pragma once

#include <functional>

#include "platform/UIKit/UIView.h"

namespace tarni::KIFAdditions {

// Whether `view` is `ancestor` or stands below it, for a caller who knows that without going up the
// tree.
using DescendsFrom =
    std::function<bool(const platform::UIViewRef& view, const platform::UIViewRef& ancestor)>;

// True when a hit test that gave `hitView` means that `view` takes the touch.
bool isTappableWithHitTestResultView(
    const platform::UIViewRef& view, const platform::UIViewRef& hitView,
    const DescendsFrom& descendsFrom = platform::isDescendantOfView);
// The first of five sample points of `rect` (the centre, then one point inside each corner) at
// which the view takes a touch; not a number when there is none. Both in the view's coordinates.
platform::CGPoint tappablePointInRect(
    const platform::UIViewRef& view, const platform::CGRect& rect,
    const DescendsFrom& descendsFrom = platform::isDescendantOfView);
bool isTappableInRect(const platform::UIViewRef& view, const platform::CGRect& rect,
                      const DescendsFrom& descendsFrom = platform::isDescendantOfView);
bool isTappable(const platform::UIViewRef& view,
                const DescendsFrom& descendsFrom = platform::isDescendantOfView);
bool isProbablyTappable(const platform::UIViewRef& view,
                        const DescendsFrom& descendsFrom = platform::isDescendantOfView);
// By its tap gesture recognizer alone, without a hit test.
bool isTappable_AI(const platform::UIViewRef& view);
bool hasTapGestureRecognizer(const platform::UIViewRef& view);

bool isNavigationItemView(const platform::UIViewRef& view);
// The view's own setting, or that of the bar or control that answers for it.
bool isUserInteractionActuallyEnabled(const platform::UIViewRef& view);

// False when the view or one of its ancestors is hidden, whatever the frame.
bool isVisibleInViewHierarchy(const platform::UIViewRef& view);
// False when clipping ancestors leave nothing of the view; hidden ancestors do not count. A
// rectangle that is empty in one direction only counts as visible.
bool isVisibleInWindowFrame(const platform::UIViewRef& view);

// The view's window when it is not transformed, else the first such window of the application,
// else null.
platform::UIWindowRef windowOrIdentityWindow(const platform::UIViewRef& view);

// A block that is given a view and may set the flag to end the walk. It does not change the tree.
using ViewBlock = std::function<void(const platform::UIViewRef&, bool& stop)>;

// The view itself, then everything below it, parents before children.
void performBlockOnDescendentViews(const platform::UIViewRef& view, const ViewBlock& block);
void performBlockOnDescendentViews(const platform::UIViewRef& view, const ViewBlock& block,
                                   bool& stop);
// The view itself, then each of its ancestors outwards.
void performBlockOnAscendentViews(const platform::UIViewRef& view, const ViewBlock& block);

}  // namespace tarni::KIFAdditions
