// The two ends of a socket, as text and number.
#pragma once

#include <cstdint>
#include <string>

namespace tarni {

// The text is empty and the port 0 when there is no such end.
struct SocketAddress {
  std::string host;
  std::uint16_t port = 0;

  static SocketAddress localOf(int descriptor);
  static SocketAddress peerOf(int descriptor);
};

}  // namespace tarni
