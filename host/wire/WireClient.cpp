#include "host/wire/WireClient.h"

#include <poll.h>

#include <algorithm>

#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

bool isAnyReadable(std::span<const int> descriptors) {
  return std::ranges::any_of(descriptors, [](int descriptor) {
    pollfd entry{descriptor, POLLIN, 0};
    return poll(&entry, 1, 0) > 0;
  });
}

}  // namespace

WireClient::WireClient(std::uint16_t port, milliseconds connectTimeout)
    : socket_(Socket::connectToThisMachine(port, Clock::now() + connectTimeout)) {}

void WireClient::sendLine(std::string_view text, milliseconds timeout) {
  std::string line(text);
  line += "\r\n";
  socket_.write(line, Clock::now() + timeout);
}

std::optional<std::string> WireClient::receive(milliseconds timeout, std::span<const int> wakeOn) {
  const auto deadline = Clock::now() + timeout;
  bool hasRead = false;
  while (true) {
    if (auto message = frames_.next()) return message;
    if (progress_ && frames_.announcedBytes() > 0) {
      progress_(frames_.pendingBytes(), frames_.announcedBytes());
    }
    if (socket_.waitForData(deadline, wakeOn) != Socket::Ready::Data) return std::nullopt;
    // A program that never stops sending would keep the wait above from ending.
    if (hasRead && (Clock::now() >= deadline || isAnyReadable(wakeOn))) return std::nullopt;
    const auto bytes = socket_.read();
    hasRead = true;
    if (bytes.empty()) {
      throw WireError(frames_.pendingBytes() == 0
                          ? "the program closed the connection"
                          : "the program closed the connection in the middle of a message");
    }
    frames_.append(bytes);
  }
}

}  // namespace tarni::host
