#include "platform/Foundation/Guarded.h"

#include "platform/Foundation/NSLog.h"

namespace tarni::platform {

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
