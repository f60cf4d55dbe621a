#include <algorithm>

#include "agent/session/protocol/Method.h"
#include "agent/session/protocol/Names.h"

namespace tarni::session {
namespace {

constexpr Parameter kCommon[] = {
    {"timeout", Kind::Number, kOptional,
     "Milliseconds after which the request is answered with `timeout`, whatever keeps it: that the "
     "program's main thread is busy, or a wait. None for none; 10,000 for `wait.for` and "
     "`wait.rest`."},
};

bool fits(const Json& value, Kind kind) {
  switch (kind) {
    case Kind::Integer:
      return value.is_number_integer();
    case Kind::Number:
      return value.is_number();
    case Kind::Text:
      return value.is_string();
    case Kind::Flag:
      return value.is_boolean();
    case Kind::Object:
      return value.is_object();
    case Kind::List:
      return value.is_array();
    case Kind::Any:
      return true;
  }
  return false;
}

const char* kindInWords(Kind kind) {
  switch (kind) {
    case Kind::Integer:
      return "a whole number";
    case Kind::Number:
      return "a number";
    case Kind::Text:
      return "a text";
    case Kind::Flag:
      return "true or false";
    case Kind::Object:
      return "an object";
    case Kind::List:
      return "a list";
    case Kind::Any:
      return "a value";
  }
  return "";
}

[[noreturn]] void refuseParameter(const Method& method, const std::string& why) {
  throw SessionError(errors::kInvalidArgument, std::string(method.name) + ": " + why);
}

const Parameter* named(const Method& method, const std::string& name) {
  for (const std::span<const Parameter> row : {method.parameters, commonParameters()}) {
    const auto found = std::ranges::find(row, std::string_view(name), &Parameter::name);
    if (found != row.end()) return &*found;
  }
  return nullptr;
}

std::vector<std::string_view> allNames(const Method& method) {
  std::vector<std::string_view> names = namesOf(method.parameters);
  for (const Parameter& parameter : kCommon) names.push_back(parameter.name);
  return names;
}

}  // namespace

std::span<const Parameter> commonParameters() {
  return kCommon;
}

void checkParameters(const Method& method, const Json& parameters) {
  for (const auto& [name, value] : parameters.items()) {
    const Parameter* const parameter = named(method, name);
    if (!parameter) refuseName(std::string(method.name), name, allNames(method));
    if (!fits(value, parameter->kind)) {
      refuseParameter(method, "\"" + name + "\" must be " + kindInWords(parameter->kind));
    }
  }
  for (const Parameter& parameter : method.parameters) {
    if (parameter.isRequired && !parameters.contains(parameter.name)) {
      refuseParameter(method, "\"" + std::string(parameter.name) + "\" is missing");
    }
  }
}

}  // namespace tarni::session
