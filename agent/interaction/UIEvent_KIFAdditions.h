// UIEvent(KIFAdditions): the low-level record behind a synthetic event, as the touch screen itself
// would deliver it. Main thread.
#pragma once

#include <span>

#include "platform/UIKit/UIEvent.h"

namespace tarni::KIFAdditions {

using Touches = std::span<const platform::UITouchRef>;

// A digitizer record of one hand with a finger for each touch, in order. The first finger has the
// index 1.
platform::IOHIDEventRef kif_IOHIDEventWithTouches(Touches touches);

// Gives the event the record that this version of the platform reads: the digitizer record from
// version 8 on, the legacy record below.
void kif_setEventWithTouches(platform::UIEvent& event, Touches touches);
void kif_setIOHIDEventWithTouches(platform::UIEvent& event, Touches touches);
// Of the first touch only.
void kif_setGSEventWithTouches(platform::UIEvent& event, Touches touches);

}  // namespace tarni::KIFAdditions
