#include "backends/ios/views/Screen.h"

#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/Values.h"

namespace tarni::ios {

platform::CGRect Screen::bounds() const {
  ::UIScreen* const screen = [::UIScreen mainScreen];
  return toRect(answered(screen, "bounds", [&] { return [screen bounds]; }));
}

double Screen::scale() const {
  ::UIScreen* const screen = [::UIScreen mainScreen];
  return answered(
      screen, "scale", [&] { return [screen scale]; }, 1);
}

}  // namespace tarni::ios
