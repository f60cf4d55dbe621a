// The toolkit's event loop, turned by a benchmark that runs inside it.
#pragma once

#include <functional>

#include "platform/Task.h"

namespace tarni::bench {

// Turns the loop until the work has ended.
void finish(platform::Task<void> work);
// Turns the loop until the screen is shown and has come to rest.
void letItShow(const std::function<bool()>& isShown);

}  // namespace tarni::bench
