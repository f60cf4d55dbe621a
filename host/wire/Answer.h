// Answer: what the agent answered to one playback command: a JSON array of objects. A plain value.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class Answer {
 public:
  // Throws AgentException when the agent answered "exceptionmsg", WireError for what no agent
  // answers.
  explicit Answer(std::string text);

  // As it came. A web page may answer text that is not JSON; it then has no entries.
  const std::string& text() const { return text_; }
  const Json& entries() const& { return entries_; }
  Json entries() && { return std::move(entries_); }

  std::vector<std::string> elementIds() const { return valuesOf("elementID"); }
  // The first "output"; null when there is none, as for an element that is not known.
  std::optional<std::string> output() const;

 private:
  std::vector<std::string> valuesOf(const char* key) const;

  std::string text_;
  Json entries_;
};

// The objects in an array, as every message of the agent's is one; none in text of a web page.
// Throws WireError when the message is beyond what an agent sends.
Json objectsOf(std::string_view message);

}  // namespace tarni::host
