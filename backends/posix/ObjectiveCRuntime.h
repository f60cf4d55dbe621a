// ObjectiveCRuntime: the method tables of classes, kept beside the classes themselves.
//
// A backend defines what can be hooked with `class_replaceMethod` at start-up and calls it through
// `perform`. Main thread.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ObjectiveC/Runtime.h"

namespace tarni::posix {

class ObjectiveCRuntime : public platform::ObjectiveCRuntime {
 public:
  platform::Method class_getInstanceMethod(platform::Class cls, std::string_view selector) override;
  bool class_addMethod(platform::Class cls, std::string_view selector,
                       platform::Implementation implementation, std::string_view types) override;
  void class_replaceMethod(platform::Class cls, std::string_view selector,
                           platform::Implementation implementation,
                           std::string_view types) override;
  void method_exchangeImplementations(platform::Method first, platform::Method second) override;
  // The method may exchange or replace itself while it runs.
  void perform(platform::Class cls, std::string_view selector,
               const std::vector<platform::Argument>& arguments) override;

 private:
  // Methods are handed out by address, which stays theirs.
  using MethodTable = std::map<std::string, std::unique_ptr<platform::MethodInfo>, std::less<>>;

  platform::Method ownMethod(platform::Class cls, std::string_view selector) const;

  std::map<platform::Class, MethodTable> tables_;
};

}  // namespace tarni::posix
