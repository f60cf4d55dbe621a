#include "backends/ios/Guard.h"

#include <string>

#include "backends/ios/Report.h"

namespace tarni::ios {

void detail::reportRaised(id object, const char* question, const TarniRaised& raised) noexcept {
  const std::string asked =
      std::string("-[") + class_getName(object_getClass(object)) + " " + question + "]";
  reportOnce(asked, asked + " raised " + raised.name + ": " + raised.reason);
}

}  // namespace tarni::ios
