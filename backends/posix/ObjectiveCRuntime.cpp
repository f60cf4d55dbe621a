#include "backends/posix/ObjectiveCRuntime.h"

#include <utility>

namespace tarni::posix {

platform::Method ObjectiveCRuntime::ownMethod(platform::Class cls,
                                              std::string_view selector) const {
  const auto table = tables_.find(cls);
  if (table == tables_.end()) return nullptr;
  const auto method = table->second.find(selector);
  return method == table->second.end() ? nullptr : method->second.get();
}

platform::Method ObjectiveCRuntime::class_getInstanceMethod(platform::Class cls,
                                                            std::string_view selector) {
  for (platform::Class current = cls; current; current = current->superclass()) {
    if (const platform::Method method = ownMethod(current, selector)) return method;
  }
  return nullptr;
}

bool ObjectiveCRuntime::class_addMethod(platform::Class cls, std::string_view selector,
                                        platform::Implementation implementation,
                                        std::string_view types) {
  if (!cls || ownMethod(cls, selector)) return false;
  tables_[cls][std::string(selector)] = std::make_unique<platform::MethodInfo>(
      platform::MethodInfo{std::string(selector), std::string(types), std::move(implementation)});
  return true;
}

void ObjectiveCRuntime::class_replaceMethod(platform::Class cls, std::string_view selector,
                                            platform::Implementation implementation,
                                            std::string_view types) {
  if (const platform::Method method = ownMethod(cls, selector)) {
    method->implementation = std::move(implementation);
  } else {
    class_addMethod(cls, selector, std::move(implementation), types);
  }
}

void ObjectiveCRuntime::method_exchangeImplementations(platform::Method first,
                                                       platform::Method second) {
  if (first && second) std::swap(first->implementation, second->implementation);
}

void ObjectiveCRuntime::perform(platform::Class cls, std::string_view selector,
                                const std::vector<platform::Argument>& arguments) {
  const platform::Method method = class_getInstanceMethod(cls, selector);
  if (!method || !method->implementation) throw platform::unrecognizedSelector(cls, selector);
  const platform::Implementation implementation = method->implementation;
  implementation(arguments);
}

}  // namespace tarni::posix
