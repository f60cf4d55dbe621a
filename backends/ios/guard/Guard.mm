#include "backends/ios/guard/Guard.h"

#include <string>

#include "backends/ios/guard/Report.h"
#include "platform/Foundation/Guarded.h"

namespace tarni::ios {
namespace {

std::string asked(id object, const char* question) {
  return std::string("-[") + class_getName(object_getClass(object)) + " " + question + "]";
}

}  // namespace

void detail::reportRaised(id object, const char* question, const TarniRaised& raised) noexcept {
  const std::string message = asked(object, question);
  reportOnce(message, message + " raised " + raised.name + ": " + raised.reason);
}

void detail::reportThrown(id object, const char* question,
                          const std::exception_ptr& thrown) noexcept {
  const std::string message = asked(object, question);
  reportOnce(message, message + " threw " + platform::reasonOf(thrown));
}

}  // namespace tarni::ios
