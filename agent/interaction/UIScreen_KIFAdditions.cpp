#include "agent/interaction/UIScreen_KIFAdditions.h"

namespace tarni::KIFAdditions {

double majorSwipeDisplacement(const platform::UIScreen& screen) {
  return screen.bounds().size.width / 2;
}

}  // namespace tarni::KIFAdditions
