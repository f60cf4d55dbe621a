// Listening: what `record` and `spy` share: taking messages from the recorder port until a person
// or a limit ends it. Main thread.
#pragma once

#include <functional>
#include <optional>
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
    // Returns how many of the things that are counted the message held.
    std::function<int(const RecorderClient::Message&)> onMessage;
    // A line that a person typed; null when nobody is asked.
    std::function<void(const std::string&)> onLine = {};
  };
  // Returns when the count is reached, the seconds have passed, Ctrl-C or a termination signal
  // comes, or the program closes the connection. Sets the invocation's result to "no" when fewer
  // came than were asked for.
  void run(RecorderClient& recorder, Invocation& invocation, const Handlers& handlers) const;

 private:
  std::optional<int> count_;
  std::optional<double> seconds_;
};

// "12:03:11.250", in local time.
std::string timeOfDay();

}  // namespace tarni::host
