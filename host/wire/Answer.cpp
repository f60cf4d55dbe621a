#include "host/wire/Answer.h"

#include <utility>

#include "host/wire/WireError.h"

namespace tarni::host {

Answer::Answer(std::string text) : text_(std::move(text)), entries_(objectsOf(text_)) {
  const auto reasons = valuesOf("exceptionmsg");
  if (!reasons.empty()) throw AgentException(reasons.front());
}

std::optional<std::string> Answer::output() const {
  const auto outputs = valuesOf("output");
  if (outputs.empty()) return std::nullopt;
  return outputs.front();
}

std::vector<std::string> Answer::valuesOf(const char* key) const {
  std::vector<std::string> values;
  for (const auto& entry : entries_) {
    const auto found = entry.find(key);
    if (found != entry.end() && found->is_string()) values.push_back(found->get<std::string>());
  }
  return values;
}

Json objectsOf(std::string_view message) {
  try {
    auto objects = Json::array();
    auto parsed = readJson(message);
    if (!parsed.is_array()) return objects;
    for (auto& entry : parsed) {
      if (entry.is_object()) objects.push_back(std::move(entry));
    }
    return objects;
  } catch (const JsonTooLarge& error) {
    throw WireError(std::string("the program sent what no agent sends: ") + error.what());
  }
}

}  // namespace tarni::host
