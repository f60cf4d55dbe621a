// RecorderClient: a connection to the agent's recorder port; recorded steps come in, spy commands
// go out. A program serves one such client in its life. Any thread, one at a time; failures are
// WireErrors.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

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

  // The agent reads two commands for each message that it has sent, and a command by itself makes
  // it read no other. Commands keep a distance in time, since a read may take two that come at once
  // for one.
  void startObjectSpy();
  void stopObjectSpy();
  // Highlights the element that was spied `index` places before the newest one. False when that
  // would take the last read, which is for the command that ends spying.
  bool highlight(int index);

 private:
  void send(std::string_view command);

  WireClient wire_;
  bool isFirst_ = true;
  int readsLeft_ = 0;  // negative while the greeting is on its way
  Clock::time_point nextCommand_;
};

}  // namespace tarni::host
