#include "platform/UIKit/UIApplication.h"

#include <algorithm>

namespace tarni::platform {

std::vector<UIWindowRef> windowsInReach(const std::vector<UIWindowRef>& shown,
                                        const UIWindowRef& key) {
  std::vector<UIWindowRef> reached;
  if (key) reached.push_back(key);
  for (auto window = shown.rbegin(); window != shown.rend(); ++window) {
    if (*window == key) continue;
    const CGRect place = (*window)->frame();
    const auto covers = [&place](const UIWindowRef& other) {
      const CGPoint origin = other->frame().origin;
      return other->hitTest({place.midX() - origin.x, place.midY() - origin.y}) != nullptr;
    };
    if (std::none_of(shown.rbegin(), window, covers)) reached.push_back(*window);
  }
  return reached;
}

}  // namespace tarni::platform
