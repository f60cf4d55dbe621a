#include "agent/TcpCommunication/GCDAsyncSocket/ReserveSockets.h"

#include <sys/socket.h>

#include <utility>

#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"

namespace tarni {

ReserveSockets& ReserveSockets::shared() {
  static auto* const sockets = new ReserveSockets;
  return *sockets;
}

void ReserveSockets::fill() {
  const std::lock_guard lock(mutex_);
  for (const int family : {AF_INET, AF_INET6}) {
    if (!of(family).isOpen()) of(family) = openStreamSocket(family);
  }
}

FileDescriptor ReserveSockets::take(int family) {
  const std::lock_guard lock(mutex_);
  return std::move(of(family));
}

FileDescriptor& ReserveSockets::of(int family) {
  return family == AF_INET ? socket4_ : socket6_;
}

}  // namespace tarni
