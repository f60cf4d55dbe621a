// The seam's values for the runtime's classes. Any thread.
#pragma once

#include "backends/ios/Apple.h"
#include "platform/ObjectiveC/Class.h"

namespace tarni::ios {

// The value of the runtime's class, made with those of its superclasses when it is first seen. Null
// for Nil.
platform::Class classFor(::Class cls);

}  // namespace tarni::ios
