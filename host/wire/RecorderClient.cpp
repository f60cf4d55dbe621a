#include "host/wire/RecorderClient.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tarni::host {

namespace {

constexpr std::string_view kRecorderGreeting = "Welcome! RecorderServer ";
constexpr milliseconds kSendTimeout{5000};

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
    const bool earlier = std::exchange(isFirst_, false);
    if (!earlier || !text->starts_with(kRecorderGreeting))
      return Message{*std::move(text), earlier};
  }
}

void RecorderClient::startObjectSpy() {
  wire_.sendLine("startobjectspy", kSendTimeout);
}

void RecorderClient::stopObjectSpy() {
  wire_.sendLine("stopobjectspy", kSendTimeout);
}

void RecorderClient::highlight(int index) {
  wire_.sendLine("highlight=" + std::to_string(index), kSendTimeout);
}

}  // namespace tarni::host
