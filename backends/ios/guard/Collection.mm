#include "backends/ios/guard/Collection.h"

#include "backends/ios/runtime/RuntimeClass.h"

namespace tarni::ios {

NSArray* detail::elementsOf(id<NSFastEnumeration> collection, ::Class kind) {
  NSMutableArray* const elements = [NSMutableArray array];
  for (id element in collection) {
    if (isKindOf(element, kind)) [elements addObject:element];
  }
  return elements;
}

}  // namespace tarni::ios
