// UITouch(KIFAdditions): synthetic touches. Main thread.
//
// A touch is made for one gesture. In a window that has gone it hits no view.
#pragma once

#include "platform/UIKit/UIEvent.h"

namespace tarni::KIFAdditions {

// A touch that just began: at a point in window coordinates, at a point in the view's coordinates,
// or in the middle of the view's frame size. Null when the platform makes none.
platform::UITouchRef initAtPointInWindow(platform::CGPoint point,
                                         const platform::UIWindowRef& window);
platform::UITouchRef initAtPointInView(platform::CGPoint point, const platform::UIViewRef& view);
// Kept for callers from outside.
platform::UITouchRef initInView(const platform::UIViewRef& view);

// Moves the touch to a point in window coordinates, at the present time. Nothing for null.
void setLocationInWindow(const platform::UITouchRef& touch, platform::CGPoint point);
void setPhaseAndUpdateTimestamp(const platform::UITouchRef& touch, platform::UITouchPhase phase);

// Attaches a digitizer record of this touch alone.
void kif_setHidEvent(const platform::UITouchRef& touch);

}  // namespace tarni::KIFAdditions
