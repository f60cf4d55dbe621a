// Method: one row of the table of methods (Methods.cpp). The row dispatches, checks the parameters
// and is what docs/session.md says of the method. Plain values; any thread.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "agent/session/protocol/Result.h"
#include "platform/Task.h"

namespace tarni::session {

class Call;
using CallRef = std::shared_ptr<Call>;

enum class Kind { Integer, Number, Text, Flag, Object, List, Any };

// What acts may change the program, and its answers say what it cost.
enum class Effect { Asks, Acts, Waits };

// What a platform must have for it, beside views.
enum class Needs { Nothing, Mouse, Windows };

struct Parameter {
  std::string_view name;
  Kind kind;
  bool isRequired;
  std::string_view description;
};

inline constexpr bool kRequired = true;
inline constexpr bool kOptional = false;

struct Method {
  std::string_view name;
  std::string_view description;
  std::span<const Parameter> parameters;
  std::string_view result;  // its members, in words
  Effect effect;
  // Main thread. Null for what the client's connection does by itself.
  platform::Task<Result> (*handler)(CallRef call);
  Needs needs = Needs::Nothing;
};

// All methods, in the order of the reference.
std::span<const Method> methods();
// Null when there is none of that name.
const Method* methodNamed(std::string_view name);
// What every method takes beside its own parameters.
std::span<const Parameter> commonParameters();

// Throws SessionError (invalid argument) for parameters that do not fit the method's row.
void checkParameters(const Method& method, const Json& parameters);

// docs/session.md.
std::string reference();

}  // namespace tarni::session
