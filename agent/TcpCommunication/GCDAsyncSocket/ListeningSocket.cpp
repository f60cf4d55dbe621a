#include "agent/TcpCommunication/GCDAsyncSocket/ListeningSocket.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

#include "agent/TcpCommunication/GCDAsyncSocket/ReserveSockets.h"
#include "agent/TcpCommunication/GCDAsyncSocket/SocketAddress.h"
#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"

namespace tarni {
namespace {

constexpr int kBacklog = 1024;

// A step that failed, with the errno it left.
struct Failure {
  int systemCode;
  const char* reason;

  bool isFamilyMissing() const { return systemCode == EAFNOSUPPORT || systemCode == EADDRNOTAVAIL; }
};

using Attempt = std::variant<FileDescriptor, Failure>;

bool setOption(int descriptor, int level, int option) {
  const int on = 1;
  return setsockopt(descriptor, level, option, &on, sizeof on) == 0;
}

Attempt listenOn(const sockaddr& address, socklen_t length) {
  FileDescriptor descriptor = openStreamSocket(address.sa_family);
  const int systemCode = errno;
  if (!descriptor.isOpen()) descriptor = ReserveSockets::shared().take(address.sa_family);
  if (!descriptor.isOpen()) return Failure{systemCode, "Error in socket() function"};
  if (!makeNonBlocking(descriptor.get())) {
    return Failure{errno, "Error enabling non-blocking IO on socket (fcntl)"};
  }
  if (!setOption(descriptor.get(), SOL_SOCKET, SO_REUSEADDR)) {
    return Failure{errno, "Error enabling address reuse (setsockopt)"};
  }
  // Each family has a socket of its own on the same port.
  if (address.sa_family == AF_INET6 && !setOption(descriptor.get(), IPPROTO_IPV6, IPV6_V6ONLY)) {
    return Failure{errno, "Error limiting the socket to IPv6 (setsockopt)"};
  }
  if (bind(descriptor.get(), &address, length) != 0) {
    return Failure{errno, "Error in bind() function"};
  }
  if (listen(descriptor.get(), kBacklog) != 0) {
    return Failure{errno, "Error in listen() function"};
  }
  return Attempt(std::move(descriptor));
}

Attempt listenOn4(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_ANY);
  return listenOn(reinterpret_cast<const sockaddr&>(address), sizeof address);
}

Attempt listenOn6(std::uint16_t port) {
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_port = htons(port);
  address.sin6_addr = in6addr_any;
  return listenOn(reinterpret_cast<const sockaddr&>(address), sizeof address);
}

NSError errorOf(const Failure& failure) {
  return errnoError(failure.systemCode, failure.reason);
}

}  // namespace

std::variant<ListeningSockets, NSError> listenOnAllAddresses(std::uint16_t port) {
  ListeningSockets sockets;
  Attempt on4 = listenOn4(port);
  const auto* const failure4 = std::get_if<Failure>(&on4);
  if (failure4 && !failure4->isFamilyMissing()) return errorOf(*failure4);
  if (!failure4) {
    sockets.socket4 = std::get<FileDescriptor>(std::move(on4));
    port = SocketAddress::localOf(sockets.socket4.get()).port;
  }
  Attempt on6 = listenOn6(port);
  const auto* const failure6 = std::get_if<Failure>(&on6);
  if (failure6 && (failure4 || !failure6->isFamilyMissing())) return errorOf(*failure6);
  if (!failure6) sockets.socket6 = std::get<FileDescriptor>(std::move(on6));
  ReserveSockets::shared().fill();
  return sockets;
}

}  // namespace tarni
