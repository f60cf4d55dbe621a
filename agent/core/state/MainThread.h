// The main thread, asserted: what belongs there says so in its first line. Any thread.
#pragma once

#include <cassert>

#include "platform/Platform.h"

namespace tarni {

// What touches views or the stores of views belongs to the main thread; a debug build ends here
// when it is called from any other.
inline void assertMainThread() {
  assert(platform::current().dispatch->mainQueue().isMainThread());
}

}  // namespace tarni
