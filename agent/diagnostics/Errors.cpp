#include "agent/diagnostics/Errors.h"

#include <exception>
#include <utility>

#include "platform/Foundation/Guarded.h"

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

void spawnLogged(platform::Task<void> work, const char* context) {
  platform::spawn(std::move(work), [context](const std::exception_ptr& failure) {
    platform::logFailure(context, failure);
  });
}

}  // namespace tarni::Diagnostics
