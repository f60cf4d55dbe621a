// Associated objects, which the runtime on Linux lacks. They go with their object: in its
// NSObject's `dealloc`, after those of its subclasses, as on Apple's systems.
#include <map>
#include <mutex>
#include <string>
#include <unordered_map>

#import "tests/ios/uikit/State.h"

namespace {

using Associations = std::map<const void*, id>;

struct Table {
  std::recursive_mutex mutex;
  std::unordered_map<void*, Associations> objects;
};

// Never destroyed: objects go until the process is gone.
Table& table() {
  static auto* const shared = new Table;
  return *shared;
}

void removeAll(id object) {
  Associations taken;
  {
    const std::lock_guard lock(table().mutex);
    const auto found = table().objects.find(object);
    if (found == table().objects.end()) return;
    taken = std::move(found->second);
    table().objects.erase(found);
  }
  for (const auto& [key, value] : taken) [value release];
}

const void* nameKey(const char* name) {
  static auto* const names = new std::unordered_map<std::string, char>;
  const std::lock_guard lock(table().mutex);
  return &*names->try_emplace(name).first;
}

}  // namespace

id objc_getAssociatedObject(id object, const void* key) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().objects.find(object);
  if (found == table().objects.end()) return nil;
  const auto value = found->second.find(key);
  return value == found->second.end() ? nil : [[value->second retain] autorelease];
}

void objc_setAssociatedObject(id object, const void* key, id value, objc_AssociationPolicy) {
  if (!object) return;
  id previous = nil;
  {
    const std::lock_guard lock(table().mutex);
    id& held = table().objects[object][key];
    previous = held;
    held = [value retain];
  }
  [previous release];
}

id kept(id object, const char* name) { return objc_getAssociatedObject(object, nameKey(name)); }

void keep(id object, const char* name, id value) {
  objc_setAssociatedObject(object, nameKey(name), value, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

@interface NSObject (TarniAssociatedObjects)
@end

@implementation NSObject (TarniAssociatedObjects)

+ (void)load {
  const Method own = class_getInstanceMethod([NSObject class], @selector(tarniDealloc));
  const Method original = class_getInstanceMethod([NSObject class], @selector(dealloc));
  method_exchangeImplementations(own, original);
}

- (void)tarniDealloc {
  removeAll(self);
  [self tarniDealloc];
}

@end
