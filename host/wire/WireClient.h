// WireClient: one connection to one of the agent's ports; sends lines, receives framed messages.
// Used by everything on the host's side that talks to an agent. Any thread, one at a time. All
// failures are WireErrors.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/wire/FrameReader.h"
#include "host/wire/Socket.h"

namespace tarni::host {

using std::chrono::milliseconds;

class WireClient {
 public:
  // Bytes of a message received so far, and how many it has.
  using Progress = std::function<void(std::size_t received, std::size_t total)>;

  // Connects within `connectTimeout`. It is worth waiting: after a playback client has left, the
  // port accepts again only after a second.
  WireClient(std::uint16_t port, milliseconds connectTimeout);

  // Called while a message that does not come at once is being received.
  void onProgress(Progress progress) { progress_ = std::move(progress); }

  // Sends the text and CR LF in one write, as the agent's first read takes what has arrived by
  // then. The text must not hold CR LF.
  void sendLine(std::string_view text, milliseconds timeout);

  // The payload of the next message. Null when the time-out passes or, before a message is whole,
  // one of `wakeOn` becomes readable.
  std::optional<std::string> receive(milliseconds timeout, std::span<const int> wakeOn = {});

 private:
  Socket socket_;
  FrameReader frames_;
  Progress progress_;
};

}  // namespace tarni::host
