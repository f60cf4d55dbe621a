#include "host/wire/Answer.h"

#include <nlohmann/json.hpp>

#include "host/wire/WireError.h"

namespace tarni::host {

using nlohmann::ordered_json;

Answer::Answer(std::string text) : text_(std::move(text)) {
  const auto reasons = valuesOf("exceptionmsg");
  if (!reasons.empty()) throw AgentException(reasons.front());
}

ordered_json Answer::entries() const {
  auto parsed = ordered_json::parse(text_, nullptr, false);
  return parsed.is_array() ? parsed : ordered_json::array();
}

std::optional<std::string> Answer::output() const {
  const auto outputs = valuesOf("output");
  if (outputs.empty()) return std::nullopt;
  return outputs.front();
}

std::vector<std::string> Answer::valuesOf(const char* key) const {
  std::vector<std::string> values;
  for (const auto& entry : entries()) {
    if (!entry.is_object()) continue;
    const auto found = entry.find(key);
    if (found != entry.end() && found->is_string()) values.push_back(found->get<std::string>());
  }
  return values;
}

}  // namespace tarni::host
