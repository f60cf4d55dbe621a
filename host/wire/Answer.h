// Answer: what the agent answered to one playback command: a JSON array of objects. A plain value.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace tarni::host {

class Answer {
 public:
  // Throws AgentException when the agent answered "exceptionmsg".
  explicit Answer(std::string text);

  // As it came. A web page may answer text that is no JSON; it then has no entries.
  const std::string& text() const { return text_; }
  nlohmann::ordered_json entries() const;

  std::vector<std::string> elementIds() const { return valuesOf("elementID"); }
  // The first "output"; null when there is none, as for an element that is not known.
  std::optional<std::string> output() const;

 private:
  std::vector<std::string> valuesOf(const char* key) const;

  std::string text_;
};

}  // namespace tarni::host
