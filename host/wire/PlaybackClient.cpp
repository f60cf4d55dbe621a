#include "host/wire/PlaybackClient.h"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr std::string_view kPlaybackGreeting = "Welcome PlayBackServer ";

// What surely travels in one piece. The agent's first read takes what has arrived, so a longer
// first command might be cut.
constexpr std::size_t kLongestFirstLine = std::size_t{16} * 1024;

constexpr std::string_view kCommandWithoutEffect = "{}";

}  // namespace

std::string PlaybackCommand::line() const {
  Json keys = {{"functionname", functionName},
               {"tagname", tagName},
               {"accessortype", accessorType},
               {"accessorvalue", accessorValue},
               {"datavalue", dataValue}};
  if (!window.empty()) keys["window"] = window;
  try {
    return keys.dump();
  } catch (const nlohmann::json::type_error&) {
    throw std::invalid_argument("an argument of " + functionName + " is not UTF-8 text");
  }
}

PlaybackClient::PlaybackClient(milliseconds connectTimeout, milliseconds answerTimeout,
                               std::uint16_t port)
    : wire_(port, connectTimeout), answerTimeout_(answerTimeout) {}

std::string PlaybackClient::exchange(std::string_view line) {
  if (!used_ && line.size() > kLongestFirstLine) {
    used_ = true;
    exchange(kCommandWithoutEffect);
  }
  used_ = true;
  wire_.sendLine(line, answerTimeout_);
  return receiveAnswer();
}

// Only the first client of a program is greeted, so a greeting is skipped when it is there and
// never waited for.
std::string PlaybackClient::receiveAnswer() {
  while (true) {
    auto message = wire_.receive(answerTimeout_);
    if (!message) {
      const auto seconds = std::chrono::duration<double>(answerTimeout_).count();
      throw WireError("the program did not answer within " + std::to_string(seconds).substr(0, 4) +
                      " s: is it busy or stopped?");
    }
    const bool mayBeGreeting = std::exchange(greetingPossible_, false);
    if (!mayBeGreeting || !message->starts_with(kPlaybackGreeting)) return *std::move(message);
  }
}

}  // namespace tarni::host
