#include "agent/core/state/DictionaryReader.h"

#include <algorithm>

namespace tarni {

using nlohmann::ordered_json;

std::optional<ordered_json> DictionaryReader::read(std::string_view text,
                                                   std::span<const std::string_view> keys) {
  DictionaryReader reader(keys);
  nlohmann::json_sax<ordered_json>& events = reader;
  if (!ordered_json::sax_parse(text, &events)) return std::nullopt;
  return std::move(reader.kept_);
}

bool DictionaryReader::key(string_t& name) {
  if (level_ == 1 && std::ranges::find(keys_, name) != keys_.end()) wantedKey_ = std::move(name);
  return true;
}

bool DictionaryReader::keep(ordered_json value) {
  if (level_ == 0) return value.is_object();
  if (wantedKey_) kept_[*std::exchange(wantedKey_, std::nullopt)] = std::move(value);
  return true;
}

bool DictionaryReader::begin(ordered_json container) {
  return keep(std::move(container)) && ++level_ <= kDeepestLevel;
}

bool DictionaryReader::end() {
  --level_;
  return true;
}

}  // namespace tarni
