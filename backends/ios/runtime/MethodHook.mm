#include "backends/ios/runtime/MethodHook.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "backends/ios/guard/RaisedObject.h"
#include "backends/ios/runtime/RuntimeClass.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/touch/Event.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::ios {
namespace {

using Arguments = std::vector<platform::Argument>;

constexpr std::size_t kNumberOfHooks = 16;

HookedCall* innermost = nullptr;

// Never destroyed: the application's methods lead here until the process ends.
std::array<platform::Implementation, kNumberOfHooks>& implementations() {
  static auto* const all = new std::array<platform::Implementation, kNumberOfHooks>;
  return *all;
}

// Answers what the application's method raised, and throws what it threw.
id runHook(std::size_t hook, HookedCall& call, const Arguments& arguments) {
  platform::runGuarded("a hook", [&] { implementations()[hook](arguments); });
  if (call.thrown()) std::rethrow_exception(call.thrown());
  return call.raised();
}

id runObjectHook(std::size_t hook, id receiver, id first, id second) {
  HookedCall call(receiver, first, second);
  if (isKindOf(first, [NSString class])) {
    return runHook(hook, call, {toTextOrEmpty(first), std::monostate()});
  }
  if (isKindOf(first, objc_lookUpClass("UIEvent"))) {
    Event event(first);
    return runHook(hook, call, {static_cast<platform::UIEvent*>(&event), std::monostate()});
  }
  return runHook(hook, call, {std::monostate(), std::monostate()});
}

id runPlainHook(std::size_t hook, id receiver, const Arguments& arguments) {
  HookedCall call(receiver, nil, nil);
  return runHook(hook, call, arguments);
}

// The functions themselves hold no object of C++: what is raised or thrown passes through them.
template <std::size_t hook>
void callNothing(id self, SEL) {
  tarni_raise(runPlainHook(hook, self, {}));
}

template <std::size_t hook>
void callFlag(id self, SEL, BOOL flag) {
  tarni_raise(runPlainHook(hook, self, {static_cast<bool>(flag)}));
}

template <std::size_t hook>
void callObject(id self, SEL, id object) {
  tarni_raise(runObjectHook(hook, self, object, nil));
}

template <std::size_t hook>
void callTwoObjects(id self, SEL, id first, id second) {
  tarni_raise(runObjectHook(hook, self, first, second));
}

template <typename Function>
IMP untyped(Function* function) {
  return reinterpret_cast<IMP>(reinterpret_cast<void*>(function));
}

template <std::size_t... hooks>
IMP hookOf(MethodShape shape, std::size_t hook, std::index_sequence<hooks...>) {
  static const std::array nothing{untyped(callNothing<hooks>)...};
  static const std::array flag{untyped(callFlag<hooks>)...};
  static const std::array object{untyped(callObject<hooks>)...};
  static const std::array twoObjects{untyped(callTwoObjects<hooks>)...};
  switch (shape) {
    case MethodShape::Nothing:
      return nothing[hook];
    case MethodShape::Flag:
      return flag[hook];
    case MethodShape::Object:
      return object[hook];
    case MethodShape::TwoObjects:
      return twoObjects[hook];
    case MethodShape::Other:
      break;
  }
  return nullptr;
}

}  // namespace

MethodShape shapeOf(std::string_view types) {
  std::string letters;
  std::ranges::copy_if(types, std::back_inserter(letters),
                       [](unsigned char letter) { return !std::isdigit(letter); });
  if (letters == "v@:") return MethodShape::Nothing;
  if (letters == "v@:B" || letters == "v@:c" || letters == "v@:C") return MethodShape::Flag;
  if (letters == "v@:@") return MethodShape::Object;
  if (letters == "v@:@@") return MethodShape::TwoObjects;
  return MethodShape::Other;
}

IMP makeHook(MethodShape shape, platform::Implementation implementation, std::string_view method) {
  static std::size_t used = 0;
  const bool isPossible = shape != MethodShape::Other && used < kNumberOfHooks && implementation;
  if (!isPossible) {
    platform::NSLog("%.*s cannot be hooked: its calls are not followed",
                    static_cast<int>(method.size()), method.data());
    return nullptr;
  }
  implementations()[used] = std::move(implementation);
  return hookOf(shape, used++, std::make_index_sequence<kNumberOfHooks>());
}

HookedCall::HookedCall(id receiver, id first, id second) noexcept
    : receiver_(receiver), objects_{first, second}, outer_(std::exchange(innermost, this)) {}

HookedCall::~HookedCall() { innermost = outer_; }

HookedCall* HookedCall::of(::Class cls) {
  HookedCall* call = innermost;
  while (call && !isKindOf(call->receiver_, cls)) call = call->outer_;
  return call;
}

}  // namespace tarni::ios
