// UIView(KIFAdditions), the questions about touches: whether a view could take one. Main thread. A
// view that has gone is not tappable.
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
// By its tap gesture recognizer alone, without a hit test. Kept for callers from outside.
bool isTappable_AI(const platform::UIViewRef& view);
bool hasTapGestureRecognizer(const platform::UIViewRef& view);

bool isNavigationItemView(const platform::UIViewRef& view);
// The view's own setting, or that of the bar or control that answers for it. Kept for callers from
// outside: playback acts on what it was told to.
bool isUserInteractionActuallyEnabled(const platform::UIViewRef& view);

// The view's window when it is not transformed, else the first such window of the application,
// else null.
platform::UIWindowRef windowOrIdentityWindow(const platform::UIViewRef& view);

}  // namespace tarni::KIFAdditions
