#include "agent/core/state/Utilities_Json.h"

#include <nlohmann/json.hpp>

#include "agent/core/state/DictionaryReader.h"

namespace tarni {

using nlohmann::ordered_json;

namespace {

std::optional<std::string> compactText(const ordered_json& value) {
  if (!value.is_structured()) return std::nullopt;
  return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace

bool isUTF8(const std::string& bytes) {
  try {
    static_cast<void>(nlohmann::json(bytes).dump());
    return true;
  } catch (const nlohmann::json::type_error&) {
    return false;
  }
}

namespace Utilities {

std::optional<std::string> convertNSArrayToString(const ordered_json& array) {
  return compactText(array);
}

std::optional<std::string> convertMutableDictionaryToString(const ordered_json& dictionary) {
  return compactText(dictionary);
}

std::optional<ordered_json> convertStringToNSArray(std::string_view text) {
  ordered_json value = ordered_json::parse(text, nullptr, false);
  if (!value.is_array()) return std::nullopt;
  return value;
}

std::optional<ordered_json> convertStringToMutableDictionary(
    std::string_view text, std::span<const std::string_view> keys) {
  return DictionaryReader::read(text, keys);
}

}  // namespace Utilities
}  // namespace tarni
