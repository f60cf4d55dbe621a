#include "backends/posix/EventRecord.h"

#include <algorithm>
#include <sstream>

namespace tarni::posix {

void EventRecord::_addTouch(const platform::UITouchRef& touch, bool /*forDelayedDelivery*/) {
  if (std::ranges::find(touches_, touch) == touches_.end()) touches_.push_back(touch);
}

std::string EventRecord::description() const {
  std::ostringstream text;
  text << "<UIEvent: " << static_cast<const void*>(this) << "> type: " << static_cast<int>(type_)
       << "; timestamp: " << timestamp_ << "; touches: {";
  for (const platform::UITouchRef& touch : touches_) {
    const platform::CGPoint location = touch->locationInView(nullptr);
    text << " phase " << static_cast<int>(touch->phase()) << " at (" << location.x << ", "
         << location.y << ")";
  }
  text << " }";
  return text.str();
}

}  // namespace tarni::posix
