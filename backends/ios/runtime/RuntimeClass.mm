#include "backends/ios/runtime/RuntimeClass.h"

#include <mutex>
#include <unordered_map>

#include "backends/ios/guard/Guard.h"

namespace tarni::ios {
namespace {

// Never destroyed: threads of the agent still run while the process exits.
struct Known {
  std::recursive_mutex mutex;
  std::unordered_map<const void*, platform::Class> classes;
};

Known& known() {
  static auto* const shared = new Known;
  return *shared;
}

}  // namespace

platform::Class classFor(::Class cls) {
  if (!cls) return nullptr;
  const std::lock_guard lock(known().mutex);
  platform::Class& value = known().classes[cls];
  if (!value) {
    value = platform::defineClass(class_getName(cls), classFor(class_getSuperclass(cls)));
  }
  return value;
}

platform::Class classOf(id object) {
  return classFor(answered(
      object, "class", [&]() -> ::Class { return [object class]; }, object_getClass(object)));
}

bool isKindOf(id object, ::Class cls) noexcept {
  ::Class own = object_getClass(object);
  while (own && own != cls) own = class_getSuperclass(own);
  return own;
}

}  // namespace tarni::ios
