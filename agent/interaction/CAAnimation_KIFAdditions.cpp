#include "agent/interaction/CAAnimation_KIFAdditions.h"

#include <cmath>
#include <limits>

namespace tarni::KIFAdditions {

double KIF_completionTime(const platform::CAAnimation& animation) {
  if (animation.repeatDuration > 0) return animation.beginTime + animation.repeatDuration;
  if (std::isinf(animation.repeatCount) && animation.repeatCount > 0) {
    return std::numeric_limits<double>::infinity();
  }
  if (animation.repeatCount > 0) {
    return animation.beginTime + animation.duration * animation.repeatCount;
  }
  return animation.beginTime + animation.duration;
}

}  // namespace tarni::KIFAdditions
