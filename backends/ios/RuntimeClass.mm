#include "backends/ios/RuntimeClass.h"

#include <mutex>
#include <unordered_map>

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

}  // namespace tarni::ios
