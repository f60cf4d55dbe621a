#include "agent/session/JsonText.h"

#include <algorithm>

namespace tarni::session {

void JsonText::write(std::string_view value) {
  const auto isPlain = [](char letter) {
    return letter >= 0x20 && letter < 0x7F && letter != '"' && letter != '\\';
  };
  if (std::ranges::all_of(value, isPlain)) {
    text_.append("\"").append(value).append("\"");
  } else {
    text_ += jsonText(Json(value));
  }
}

}  // namespace tarni::session
