// MethodHook: an Objective-C method that calls what the agent gave for it, and the call that is
// going on. Main thread.
#pragma once

#include <array>
#include <exception>
#include <string_view>
#include <utility>
#include <vector>

#include "backends/ios/Apple.h"
#include "platform/ObjectiveC/Runtime.h"

namespace tarni::ios {

// What a method is called with, beside its receiver and its selector.
enum class MethodShape { Nothing, Flag, Object, TwoObjects, Other };

// Of a type encoding, with or without the offsets that the runtime writes into it.
MethodShape shapeOf(std::string_view types);

// A function of the shape that calls `implementation` each time. Null, after a log line with the
// method's name, when there is none for the shape or all of them are in use.
IMP makeHook(MethodShape shape, platform::Implementation implementation, std::string_view method);

// One call of a hook.
class HookedCall {
 public:
  HookedCall(id receiver, id first, id second) noexcept;
  ~HookedCall();
  HookedCall(const HookedCall&) = delete;
  HookedCall& operator=(const HookedCall&) = delete;

  // The innermost call whose receiver is of the class; null when there is none.
  static HookedCall* of(::Class cls);

  id receiver() const { return receiver_; }
  // What the method was called with; nil for what is not an object.
  id object(std::size_t index) const { return objects_.at(index); }
  // Keep what the application's method raised or threw until the hook has done its own.
  void setRaised(id raised) { raised_ = raised; }
  id raised() const { return raised_; }
  void setThrown(std::exception_ptr thrown) { thrown_ = std::move(thrown); }
  const std::exception_ptr& thrown() const { return thrown_; }

 private:
  id receiver_;
  std::array<id, 2> objects_;
  id raised_ = nil;
  std::exception_ptr thrown_;
  HookedCall* outer_;
};

}  // namespace tarni::ios
