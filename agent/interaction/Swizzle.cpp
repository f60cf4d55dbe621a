#include "agent/interaction/Swizzle.h"

#include "platform/Platform.h"

namespace tarni {

using platform::Implementation;
using platform::Method;

void Swizzle(platform::Class cls, std::string_view target, std::string_view replacement) {
  platform::ObjectiveCRuntime& runtime = *platform::current().runtime;
  const Method original = runtime.class_getInstanceMethod(cls, target);
  const Method substitute = runtime.class_getInstanceMethod(cls, replacement);
  if (!original || !substitute) return;
  const Implementation inherited = original->implementation;
  const std::string types = original->types;
  if (runtime.class_addMethod(cls, target, substitute->implementation, substitute->types)) {
    runtime.class_replaceMethod(cls, replacement, inherited, types);
  } else {
    runtime.method_exchangeImplementations(original, substitute);
  }
}

void swizzleWithFor(std::string_view first, std::string_view second, platform::Class cls) {
  platform::ObjectiveCRuntime& runtime = *platform::current().runtime;
  const Method one = runtime.class_getInstanceMethod(cls, first);
  const Method other = runtime.class_getInstanceMethod(cls, second);
  if (one && other) runtime.method_exchangeImplementations(one, other);
}

}  // namespace tarni
