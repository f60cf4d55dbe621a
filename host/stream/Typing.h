// Typing: whether an element took the text that was sent to it. The agent answers "[]" in either
// case: what is not a text field takes none, nor does a field that a person could not type into.
// Any thread, one at a time; failures are WireErrors and AgentExceptions.
#pragma once

#include <optional>
#include <string>

#include "host/wire/PlaybackClient.h"

namespace tarni::host {

// Asks a query of an element again and again until the answer is `wanted` or a short time has
// passed. The last answer; null when the element is gone or has none.
std::optional<std::string> awaitAnswer(PlaybackClient& client, const char* function,
                                       const std::string& id, const std::string& wanted);

class Typing {
 public:
  struct Outcome {
    bool isFailure = false;
    std::string message = {};  // what it holds instead, or what is worth saying
  };

  // To be made before the text is sent: looks what the element holds until then.
  Typing(PlaybackClient& client, std::string id);

  // To be asked once the text was sent. A text that the element held before counts as taken, and
  // so does an empty one. A failure makes identifiers void, as a find does.
  Outcome outcome(const std::string& text) const;

 private:
  std::string whyNot() const;

  PlaybackClient& client_;
  const std::string id_;
  const std::optional<std::string> before_;
};

}  // namespace tarni::host
