#include "agent/TcpCommunication/GCDAsyncSocket/SocketAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>

namespace tarni {
namespace {

SocketAddress addressOf(int descriptor, decltype(&getsockname) question) {
  sockaddr_storage storage{};
  socklen_t length = sizeof storage;
  if (question(descriptor, reinterpret_cast<sockaddr*>(&storage), &length) != 0) return {};
  std::array<char, INET6_ADDRSTRLEN> text{};
  if (storage.ss_family == AF_INET) {
    const auto& address = reinterpret_cast<const sockaddr_in&>(storage);
    inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    return {text.data(), ntohs(address.sin_port)};
  }
  if (storage.ss_family != AF_INET6) return {};
  const auto& address = reinterpret_cast<const sockaddr_in6&>(storage);
  inet_ntop(AF_INET6, &address.sin6_addr, text.data(), text.size());
  return {text.data(), ntohs(address.sin6_port)};
}

}  // namespace

SocketAddress SocketAddress::localOf(int descriptor) {
  return addressOf(descriptor, getsockname);
}

SocketAddress SocketAddress::peerOf(int descriptor) {
  return addressOf(descriptor, getpeername);
}

}  // namespace tarni
