#include "platform/Foundation/Guarded.h"

#include "platform/Foundation/NSLog.h"

namespace tarni::platform {

std::string reasonOf(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "unknown exception";
  }
}

// Takes no memory: that may be what failed.
void logFailure(const char* context, const std::exception_ptr& failure) noexcept {
  if (!failure) return;
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    NSLog("%s: %s", context, error.what());
  } catch (...) {
    NSLog("%s: unknown exception", context);
  }
}

void runGuarded(const char* context, const std::function<void()>& block) noexcept {
  try {
    block();
  } catch (...) {
    logFailure(context);
  }
}

}  // namespace tarni::platform
