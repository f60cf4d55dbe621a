// Methods and their exchange, for the few calls that the agent hooks: an application's
// `sendEvent:`, a view controller's appearance, the run-loop mode stack.
//
// A backend defines the methods of its classes at start-up and calls them through `perform`, so
// that an exchanged implementation takes effect. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Foundation/NSException.h"
#include "platform/ObjectiveC/Class.h"

namespace tarni::platform {

class UIEvent;

// What a hooked method is called with: nothing, a flag, an event or a text.
using Argument = std::variant<std::monostate, bool, UIEvent*, std::string>;

using Implementation = std::function<void(const std::vector<Argument>&)>;

// One method of a class. `types` is its type encoding.
struct MethodInfo {
  std::string selector;
  std::string types;
  Implementation implementation;
};
using Method = MethodInfo*;

class ObjectiveCRuntime {
 public:
  virtual ~ObjectiveCRuntime() = default;
  // The method that answers `selector`, searched in the class and then upwards; null when none.
  virtual Method class_getInstanceMethod(Class cls, std::string_view selector) = 0;
  // Adds a method to the class itself; false when the class itself (not a superclass) has it
  // already.
  virtual bool class_addMethod(Class cls, std::string_view selector, Implementation implementation,
                               std::string_view types) = 0;
  // Sets the method on the class itself, adding it when missing.
  virtual void class_replaceMethod(Class cls, std::string_view selector,
                                   Implementation implementation, std::string_view types) = 0;
  virtual void method_exchangeImplementations(Method first, Method second) = 0;
  // Calls the method; throws NSException "unrecognized selector" when the class does not have it.
  virtual void perform(Class cls, std::string_view selector,
                       const std::vector<Argument>& arguments) = 0;
};

// What a message to an object that does not know it raises. Null is the class of nil.
NSException unrecognizedSelector(Class cls, std::string_view selector);

}  // namespace tarni::platform
