// PlaybackMessage: one message of the playback connection, read as far as that takes no view. A
// long one takes a while, so it is made before the main thread has to do with it. Plain value; any
// thread.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace tarni {

struct PlaybackMessage {
  // `bytes` as received, terminator included.
  PlaybackMessage(std::string bytes);

  std::string text;
  bool isUTF8;
  // The fields of the command; null when the text is not a JSON object.
  std::optional<nlohmann::ordered_json> dictionary;
};

}  // namespace tarni
