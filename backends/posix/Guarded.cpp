#include "backends/posix/Guarded.h"

#include "platform/Foundation/NSLog.h"

namespace tarni::posix {

void logFailure(const char* place, const std::exception_ptr& failure) noexcept {
  if (!failure) return;
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    platform::NSLog("Exception in %s: %s", place, error.what());
  } catch (...) {
    platform::NSLog("Unknown exception in %s", place);
  }
}

void runGuarded(const char* place, const std::function<void()>& block) noexcept {
  try {
    block();
  } catch (...) {
    logFailure(place, std::current_exception());
  }
}

}  // namespace tarni::posix
