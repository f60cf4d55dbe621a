#include "platform/Foundation/Guarded.h"

#include "platform/Foundation/NSLog.h"

namespace tarni::platform {

void logFailure(const char* place, const std::exception_ptr& failure) noexcept {
  if (!failure) return;
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    NSLog("Exception in %s: %s", place, error.what());
  } catch (...) {
    NSLog("Unknown exception in %s", place);
  }
}

void runGuarded(const char* place, const std::function<void()>& block) noexcept {
  try {
    block();
  } catch (...) {
    logFailure(place, std::current_exception());
  }
}

}  // namespace tarni::platform
