#include "host/wire/RecorderClient.h"

#include <algorithm>
#include <string_view>
#include <thread>
#include <utility>

namespace tarni::host {

namespace {

constexpr std::string_view kRecorderGreeting = "Welcome! RecorderServer ";
constexpr milliseconds kSendTimeout{5000};
constexpr milliseconds kBetweenCommands{100};
constexpr int kReadsPerMessage = 2;

}  // namespace

RecorderClient::RecorderClient(milliseconds connectTimeout, std::uint16_t port)
    : wire_(port, connectTimeout) {}

std::optional<RecorderClient::Message> RecorderClient::next(milliseconds timeout,
                                                            std::span<const int> wakeOn) {
  const auto deadline = Clock::now() + timeout;
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    auto text = wire_.receive(std::max(left, milliseconds{0}), wakeOn);
    if (!text) return std::nullopt;
    readsLeft_ += kReadsPerMessage;
    const bool earlier = std::exchange(isFirst_, false);
    if (!earlier || !text->starts_with(kRecorderGreeting))
      return Message{*std::move(text), earlier};
  }
}

void RecorderClient::startObjectSpy() {
  send("startobjectspy");
}

void RecorderClient::stopObjectSpy() {
  send("stopobjectspy");
}

bool RecorderClient::highlight(int index) {
  if (readsLeft_ < 2) return false;
  send("highlight=" + std::to_string(index));
  return true;
}

void RecorderClient::send(std::string_view command) {
  std::this_thread::sleep_until(nextCommand_);
  wire_.sendLine(command, kSendTimeout);
  --readsLeft_;
  nextCommand_ = Clock::now() + kBetweenCommands;
}

}  // namespace tarni::host
