#include "agent/diagnostics/Errors.h"

#include <exception>
#include <utility>

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

void spawnLogged(platform::Task<void> work, const char* context) {
  platform::spawn(std::move(work), [context](const std::exception_ptr& failure) {
    try {
      if (failure) std::rethrow_exception(failure);
    } catch (...) {
      logCurrentException(context);
    }
  });
}

}  // namespace tarni::Diagnostics
