#include "agent/diagnostics/Errors.h"

#include <utility>

#include "platform/Foundation/Guarded.h"

namespace tarni::Diagnostics {

void spawnLogged(platform::Task<void> work, const char* context) {
  platform::spawn(std::move(work), [context](const std::exception_ptr& failure) {
    platform::logFailure(context, failure);
  });
}

}  // namespace tarni::Diagnostics
