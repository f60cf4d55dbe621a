// Utilities, on text from and for the wire: JSON and UTF-8. Any thread.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarni {

// True when the bytes are well-formed UTF-8.
bool isUTF8(const std::string& bytes);

namespace Utilities {

// Compact text; null unless given an array or an object. Text that is not UTF-8 is sent with
// replacement characters.
std::optional<std::string> convertNSArrayToString(const nlohmann::ordered_json& array);
// Kept for callers from outside.
std::optional<std::string> convertMutableDictionaryToString(
    const nlohmann::ordered_json& dictionary);

// Null when the text is not a JSON array. Kept for callers from outside.
std::optional<nlohmann::ordered_json> convertStringToNSArray(std::string_view text);

// Of a JSON object only what stands under `keys`; see DictionaryReader. Null when the text is not
// one.
std::optional<nlohmann::ordered_json> convertStringToMutableDictionary(
    std::string_view text, std::span<const std::string_view> keys);

}  // namespace Utilities
}  // namespace tarni
