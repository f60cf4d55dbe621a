// UIScreen(KIFAdditions). Main thread.
#pragma once

#include "platform/UIKit/UIApplication.h"

namespace tarni::KIFAdditions {

// The distance of a swipe over the full screen: half of its width, in points. Kept for callers from
// outside: "swipeon" goes by the view.
double majorSwipeDisplacement(const platform::UIScreen& screen);

}  // namespace tarni::KIFAdditions
