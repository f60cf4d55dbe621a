// Listening: what `record` and `spy` share: taking what a program tells until a person or a limit
// ends it. Main thread.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "host/wire/RecorderClient.h"

namespace CLI {
class App;
}

namespace tarni::host {

class Invocation;

class Listening {
 public:
  // --count and --seconds; `things` is what is counted.
  void declare(CLI::App& parser, const std::string& things);

  struct Handlers {
    // Takes the next message and returns how many of the things that are counted it held. Null when
    // none came within the time or one of the descriptors became readable before. Throws WireError
    // when the program has gone.
    std::function<std::optional<int>(milliseconds, std::span<const int>)> next;
    // A line that a person typed; null when nobody is asked.
    std::function<void(const std::string&)> onLine = {};
  };
  // Returns when the count is reached, the seconds have passed, Ctrl-C or a termination signal
  // comes, or the program closes the connection. Sets the invocation's result to "no" when fewer
  // came than were asked for.
  void run(Invocation& invocation, const Handlers& handlers) const;

 private:
  std::optional<int> count_;
  std::optional<double> seconds_;
};

// For `next` of those handlers: what comes on the recorder port.
std::function<std::optional<int>(milliseconds, std::span<const int>)> messagesOf(
    RecorderClient& recorder, std::function<int(const RecorderClient::Message&)> onMessage);

// "12:03:11.250", in local time.
std::string timeOfDay();

}  // namespace tarni::host
