// The seam's values for the runtime's classes. Any thread.
#pragma once

#include "backends/ios/Apple.h"
#include "platform/ObjectiveC/Class.h"

namespace tarni::ios {

// The value of the runtime's class, made with those of its superclasses when it is first seen. Null
// for Nil.
platform::Class classFor(::Class cls);

// The class that the object shows: an observed one's own is another. Null for nil.
platform::Class classOf(id object);

// Whether the object is of the class or of one below it; false for nil. The runtime is asked, since
// what an object says of itself may be the application's code.
bool isKindOf(id object, ::Class cls) noexcept;

}  // namespace tarni::ios
