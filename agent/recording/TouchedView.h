// Which view a touch means, for a step as for spying: of the views listed below the one that was
// touched the foremost at the point. Main thread.
#pragma once

#include <vector>

#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

// True for a view that is never looked into: what stands in it belongs to it.
bool takesTouchesWhole(const platform::UIViewRef& view);

// The view listed last, so that what lies on top wins, that holds the point (coordinates of
// `touched`) strictly inside it; null when none does. Hidden views may be listed as well: those are
// nowhere (UIView::center).
platform::UIViewRef foremostAt(const std::vector<platform::UIViewRef>& listed,
                               const platform::UIViewRef& touched, platform::CGPoint point);

}  // namespace tarni
