#include "agent/interaction/Swizzle.h"

#include "platform/Platform.h"

namespace tarni {

using platform::Implementation;
using platform::Method;

namespace {

// Null after a log line.
Method methodOf(platform::Class cls, std::string_view selector) {
  const Method method = platform::current().runtime->class_getInstanceMethod(cls, selector);
  if (!method) {
    platform::NSLog("-[%s %s] is missing here: its calls are not followed",
                    cls ? cls->name().c_str() : "nil", std::string(selector).c_str());
  }
  return method;
}

}  // namespace

void Swizzle(platform::Class cls, std::string_view target, std::string_view replacement) {
  platform::ObjectiveCRuntime& runtime = *platform::current().runtime;
  const Method original = methodOf(cls, target);
  const Method substitute = methodOf(cls, replacement);
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
  const Method one = methodOf(cls, first);
  const Method other = methodOf(cls, second);
  if (one && other) platform::current().runtime->method_exchangeImplementations(one, other);
}

}  // namespace tarni
