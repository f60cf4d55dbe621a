#include "backends/ios/runtime/ObjectiveCRuntime.h"

#include <utility>

#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/RaisedObject.h"
#include "backends/ios/guard/Thrown.h"
#include "backends/ios/runtime/MethodHook.h"
#include "backends/ios/runtime/RuntimeClass.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/touch/Event.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::ios {
namespace {

using Arguments = std::vector<platform::Argument>;

::Class native(platform::Class cls) { return cls ? objc_lookUpClass(cls->name().c_str()) : Nil; }

SEL selectorOf(std::string_view selector) {
  return sel_registerName(std::string(selector).c_str());
}

id objectAt(const Arguments& arguments, std::size_t index, const HookedCall* call) {
  if (index < arguments.size()) {
    const platform::Argument& argument = arguments[index];
    if (const auto* text = std::get_if<std::string>(&argument)) return toNSString(*text);
    if (const auto* event = std::get_if<platform::UIEvent*>(&argument)) {
      const auto* const own = dynamic_cast<const Event*>(*event);
      return own ? own->native() : nil;
    }
  }
  return call ? call->object(index) : nil;
}

bool flagAt(const Arguments& arguments, std::size_t index) {
  const auto* const flag =
      index < arguments.size() ? std::get_if<bool>(&arguments[index]) : nullptr;
  return flag && *flag;
}

bool hasOwnMethod(::Class cls, SEL selector) {
  const ::Method method = ::class_getInstanceMethod(cls, selector);
  return method && method != ::class_getInstanceMethod(class_getSuperclass(cls), selector);
}

// Nil before the application has made it.
id applicationObject() {
  const ::Class cls = objc_lookUpClass("UIApplication");
  return answered(cls, "sharedApplication", [&]() -> id { return [cls sharedApplication]; });
}

// What a method of the runtime did when it was looked up.
struct NativeImplementation {
  ::Class cls;
  SEL selector;
  IMP function;
  MethodShape shape;

  void operator()(const Arguments& arguments) const {
    HookedCall* const hooked = HookedCall::of(cls);
    const id receiver = hooked ? hooked->receiver() : applicationObject();
    if (!isKindOf(receiver, cls)) {
      throw platform::unrecognizedSelector(nullptr, sel_getName(selector));
    }
    const auto call = [&, flag = flagAt(arguments, 0), first = objectAt(arguments, 0, hooked),
                       second = objectAt(arguments, 1, hooked)] {
      send(receiver, flag, first, second);
    };
    if (hooked) {
      hooked->setThrown(thrownBy([&] { hooked->setRaised(raisedBy(call)); }));
    } else {
      guarded(call);
    }
  }

 private:
  template <typename Function>
  Function* as() const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(function));
  }

  void send(id receiver, BOOL flag, id first, id second) const {
    switch (shape) {
      case MethodShape::Nothing:
        return as<void(id, SEL)>()(receiver, selector);
      case MethodShape::Flag:
        return as<void(id, SEL, BOOL)>()(receiver, selector, flag);
      case MethodShape::Object:
        return as<void(id, SEL, id)>()(receiver, selector, first);
      case MethodShape::TwoObjects:
        return as<void(id, SEL, id, id)>()(receiver, selector, first, second);
      case MethodShape::Other:
        return;
    }
  }

  // Autoreleased; nil when it raised nothing.
  template <typename Call>
  static id raisedBy(const Call& call) {
    return tarni_raisedBy([](void* context) { (*static_cast<const Call*>(context))(); },
                          const_cast<Call*>(&call));
  }
};

// The function behind an implementation: its own when it came from the runtime, else a hook for
// the method.
IMP functionOf(platform::Implementation implementation, std::string_view types, platform::Class cls,
               std::string_view selector) {
  const auto* const own = implementation.target<NativeImplementation>();
  if (own) return own->function;
  return makeHook(shapeOf(types), std::move(implementation),
                  "-[" + cls->name() + " " + std::string(selector) + "]");
}

}  // namespace

struct ObjectiveCRuntime::NativeMethod : platform::MethodInfo {
  ::Method native = nullptr;
};

ObjectiveCRuntime::ObjectiveCRuntime() = default;
ObjectiveCRuntime::~ObjectiveCRuntime() = default;

platform::Method ObjectiveCRuntime::class_getInstanceMethod(platform::Class cls,
                                                            std::string_view selector) {
  const ::Class nativeClass = native(cls);
  const ::Method method =
      nativeClass ? ::class_getInstanceMethod(nativeClass, selectorOf(selector)) : nullptr;
  if (!method) return nullptr;
  std::unique_ptr<NativeMethod>& info = methods_[method];
  if (!info) info = std::make_unique<NativeMethod>();
  // The application may have exchanged it since.
  info->native = method;
  info->selector = selector;
  info->types = method_getTypeEncoding(method);
  info->implementation = NativeImplementation{
      nativeClass, method_getName(method), method_getImplementation(method), shapeOf(info->types)};
  return info.get();
}

bool ObjectiveCRuntime::class_addMethod(platform::Class cls, std::string_view selector,
                                        platform::Implementation implementation,
                                        std::string_view types) {
  const ::Class nativeClass = native(cls);
  if (!nativeClass || hasOwnMethod(nativeClass, selectorOf(selector))) return false;
  const IMP function = functionOf(std::move(implementation), types, cls, selector);
  return function &&
         ::class_addMethod(nativeClass, selectorOf(selector), function, std::string(types).c_str());
}

void ObjectiveCRuntime::class_replaceMethod(platform::Class cls, std::string_view selector,
                                            platform::Implementation implementation,
                                            std::string_view types) {
  const ::Class nativeClass = native(cls);
  if (!nativeClass) return;
  const IMP function = functionOf(std::move(implementation), types, cls, selector);
  if (!function) return;
  ::class_replaceMethod(nativeClass, selectorOf(selector), function, std::string(types).c_str());
}

void ObjectiveCRuntime::method_exchangeImplementations(platform::Method first,
                                                       platform::Method second) {
  if (!first || !second) return;
  if (shapeOf(first->types) != shapeOf(second->types)) {
    platform::NSLog("%s takes other arguments here than %s: its calls are not followed",
                    first->selector.c_str(), second->selector.c_str());
    return;
  }
  ::method_exchangeImplementations(static_cast<NativeMethod*>(first)->native,
                                   static_cast<NativeMethod*>(second)->native);
}

void ObjectiveCRuntime::perform(platform::Class cls, std::string_view selector,
                                const Arguments& arguments) {
  const platform::Method method = class_getInstanceMethod(cls, selector);
  if (!method) throw platform::unrecognizedSelector(cls, selector);
  const platform::Implementation implementation = method->implementation;
  implementation(arguments);
}

}  // namespace tarni::ios
