// RecorderClient: a connection to the agent's recorder port; recorded steps come in, spy commands
// go out. A program serves one such client in its life. Any thread, one at a time; failures are
// WireErrors.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "host/wire/Ports.h"
#include "host/wire/WireClient.h"

namespace tarni::host {

class RecorderClient {
 public:
  explicit RecorderClient(milliseconds connectTimeout, std::uint16_t port = kRecorderPort);

  struct Message {
    std::string text;      // a JSON array of steps or of spied elements, or text of a web page
    bool earlier = false;  // recorded before this client came: the agent repeats its last message
  };
  // The next message, the greeting left out. Null as for WireClient::receive.
  std::optional<Message> next(milliseconds timeout, std::span<const int> wakeOn = {});

  void startObjectSpy();
  void stopObjectSpy();
  // Highlights the element that was spied `index` places before the newest one.
  void highlight(int index);

 private:
  WireClient wire_;
  bool isFirst_ = true;
};

}  // namespace tarni::host
