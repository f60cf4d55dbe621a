// Opens the sockets that listen on every local address of a family. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <variant>

#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketError.h"

namespace tarni {

struct ListeningSockets {
  FileDescriptor socket4;
  FileDescriptor socket6;
};

// Non-blocking sockets that listen on `port`; 0 chooses one that serves both families. A family
// that the machine does not have stays closed; having neither is an error, like every other
// failure.
std::variant<ListeningSockets, NSError> listenOnAllAddresses(std::uint16_t port);

}  // namespace tarni
