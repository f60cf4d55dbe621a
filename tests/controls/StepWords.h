// Steps of the session channel's recorder as docs/controls.md writes them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tarni::test {

// `choose UIPickerView "Colour" = Blue`
std::string wordsOf(const nlohmann::json& step);

}  // namespace tarni::test
