// Exchange of method implementations. Main thread. A method that does not exist
// changes nothing and gets a log line.
#pragma once

#include <string_view>

#include "platform/ObjectiveC/Class.h"

namespace tarni {

// Makes `target` run what `replacement` did and the other way round. A `target` that `cls` only
// inherits is added to it, so that its superclass stays as it is.
void Swizzle(platform::Class cls, std::string_view target, std::string_view replacement);

// swizzle:with:for: of NSObject: exchanges the two methods wherever they are defined.
void swizzleWithFor(std::string_view first, std::string_view second, platform::Class cls);

}  // namespace tarni
