// PlaybackExecutor: turns one message of the playback connection into its answer. Main thread, one
// message at a time.
#pragma once

#include <optional>
#include <string>

#include "agent/TcpCommunication/PlaybackMessage.h"
#include "platform/Task.h"

namespace tarni {

class PlaybackExecutor {
 public:
  // The answer to `message`: the compact JSON of an array, or the text that the web view gave. Not
  // framed. Null when nothing is to be answered (the greeting came back). Never throws: what is
  // raised on the way is answered as "exceptionmsg".
  static platform::Task<std::optional<std::string>> execute(PlaybackMessage message);
};

}  // namespace tarni
