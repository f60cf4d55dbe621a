// PlaybackClient: a connection to the agent's playback port; one command, one answer at a time.
// Any thread, one at a time. Failures are WireErrors; what the agent itself could not do is an
// AgentException.
#pragma once

#include <string>
#include <string_view>

#include "host/wire/Answer.h"
#include "host/wire/Ports.h"
#include "host/wire/WireClient.h"

namespace tarni::host {

// All windows that take input; the first in which something fits counts.
constexpr const char* kAnyWindow = "any";

struct PlaybackCommand {
  std::string functionName;
  std::string tagName = {};
  std::string accessorType = {};
  std::string accessorValue = {};
  std::string dataValue = {};
  // Where to search: empty for the key window, kAnyWindow, or the identifier of an element for the
  // one that it stands in.
  std::string window = {};

  // One line of JSON. Throws std::invalid_argument when a value is not UTF-8.
  std::string line() const;
};

class PlaybackClient {
 public:
  PlaybackClient(milliseconds connectTimeout, milliseconds answerTimeout,
                 std::uint16_t port = kPlaybackPort);

  Answer call(const PlaybackCommand& command) { return Answer(exchange(command.line())); }

  // Sends a line as it stands and returns the payload of the answer.
  std::string exchange(std::string_view line);

  WireClient& wire() { return wire_; }

 private:
  std::string receiveAnswer();

  WireClient wire_;
  milliseconds answerTimeout_;
  bool used_ = false;
  bool greetingPossible_ = true;
};

}  // namespace tarni::host
