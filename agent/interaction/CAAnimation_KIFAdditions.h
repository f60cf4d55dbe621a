// CAAnimation(KIFAdditions): the arithmetic of animation times. Main thread.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::KIFAdditions {

// When the animation ends, in seconds on its layer's clock; infinite for one that repeats for ever.
double KIF_completionTime(const platform::CAAnimation& animation);

}  // namespace tarni::KIFAdditions
