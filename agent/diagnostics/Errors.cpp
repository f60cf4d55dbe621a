#include "agent/diagnostics/Errors.h"

#include <exception>

#include "platform/Foundation/NSLog.h"

namespace tarni::Diagnostics {

std::string reasonOfCurrentException() {
  try {
    throw;
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
    return "unknown exception";
  }
}

void logCurrentException(const char* context) noexcept {
  try {
    platform::NSLog("%s: %s", context, reasonOfCurrentException().c_str());
  } catch (...) {
    platform::NSLog("%s: no memory for the reason", context);
  }
}

}  // namespace tarni::Diagnostics
