// ObjectiveCRuntime: the methods of the application's own classes.
//
// A method that the agent adds is one of a fixed number of functions, each of which calls what the
// agent gave for it, so that it works whatever name an exchange gives it later, the application's
// own exchanges included. While one runs, `perform` speaks to its receiver: what has no form in the
// seam is passed on as it came, and what the application's method raises or throws reaches the
// application. Main thread.
#pragma once

#include <map>
#include <memory>

#include "backends/ios/Apple.h"
#include "platform/ObjectiveC/Runtime.h"

namespace tarni::ios {

class ObjectiveCRuntime : public platform::ObjectiveCRuntime {
 public:
  ObjectiveCRuntime();
  ~ObjectiveCRuntime() override;

  // Null as well for a class that the process does not have.
  platform::Method class_getInstanceMethod(platform::Class cls, std::string_view selector) override;
  // False as well when a method of these types cannot be added: they are "v@:", "v@:B", "v@:@" and
  // "v@:@@".
  bool class_addMethod(platform::Class cls, std::string_view selector,
                       platform::Implementation implementation, std::string_view types) override;
  void class_replaceMethod(platform::Class cls, std::string_view selector,
                           platform::Implementation implementation,
                           std::string_view types) override;
  // Nothing, after a log line, for methods of different types: either would be called wrongly.
  void method_exchangeImplementations(platform::Method first, platform::Method second) override;
  // Outside of a hook the receiver is the application object. Throws NSException as well for what
  // the method raises then.
  void perform(platform::Class cls, std::string_view selector,
               const std::vector<platform::Argument>& arguments) override;

 private:
  struct NativeMethod;

  std::map<::Method, std::unique_ptr<NativeMethod>> methods_;
};

}  // namespace tarni::ios
