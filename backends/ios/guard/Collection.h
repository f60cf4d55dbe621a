// answeredAll(): asks an object of the application's for an array or a set. Its elements are taken
// out while the guard still stands: what came may be neither, or a class that raises as it is
// walked. Any thread.
#pragma once

#include "backends/ios/guard/Guard.h"

namespace tarni::ios {

namespace detail {

// Raises for what has no elements.
NSArray* elementsOf(id<NSFastEnumeration> collection, ::Class kind);

}  // namespace detail

// The elements of the class, in their order: no others. Without elements when the call raises, or
// answers what has none; `answered` reports it.
template <typename Call>
NSArray* answeredAll(id object, const char* question, ::Class kind, Call call) noexcept {
  return answered(object, question, [&] { return detail::elementsOf(call(), kind); });
}

}  // namespace tarni::ios
