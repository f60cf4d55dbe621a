// Result: what a method answers. Made on the main thread, made into text on the client's queue, so
// that the program does not wait for pictures to be encoded and long texts to be written.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "agent/session/protocol/SessionError.h"

namespace tarni::session {

struct Result {
  Result(Json members = Json::object()) : value(std::move(members)) {}

  // JSON text, made once. Any thread.
  std::string text() const;
  // Made in less time than another thread needs to wake.
  bool isShort() const;

  Json value;  // an object
  // Members beside those of `value` whose values are JSON text already.
  std::vector<std::pair<std::string, std::string>> written = {};
  // Adds what takes a while; runs before the text is made.
  std::function<void(Json& value)> finish = {};
};

// One member of an object whose members are written as text.
std::string jsonText(const Json& value);

}  // namespace tarni::session
