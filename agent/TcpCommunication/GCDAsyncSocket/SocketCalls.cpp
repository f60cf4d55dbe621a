#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <utility>

namespace tarni {
namespace {

#ifdef TCP_KEEPIDLE
constexpr int kKeepAliveIdleSeconds = TCP_KEEPIDLE;
#else
constexpr int kKeepAliveIdleSeconds = TCP_KEEPALIVE;
#endif

#ifdef MSG_NOSIGNAL
constexpr int kSendFlags = MSG_NOSIGNAL;
#else
constexpr int kSendFlags = 0;
#endif

void setOption(const FileDescriptor& descriptor, int level, int option, int value) {
  setsockopt(descriptor.get(), level, option, &value, sizeof value);
}

// A system that can do it in one step leaves no moment at which a child inherits the socket.
#ifdef SOCK_CLOEXEC
FileDescriptor openRaw(int family) {
  return FileDescriptor(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
}
FileDescriptor acceptRaw(int listener) {
  return FileDescriptor(accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
}
#else
FileDescriptor closedOnExec(FileDescriptor descriptor) {
  if (descriptor.isOpen()) fcntl(descriptor.get(), F_SETFD, FD_CLOEXEC);
  return descriptor;
}
FileDescriptor openRaw(int family) {
  return closedOnExec(FileDescriptor(socket(family, SOCK_STREAM, 0)));
}
FileDescriptor acceptRaw(int listener) {
  FileDescriptor client(accept(listener, nullptr, nullptr));
  if (client.isOpen()) makeNonBlocking(client.get());
  return closedOnExec(std::move(client));
}
#endif

}  // namespace

FileDescriptor openStreamSocket(int family) {
  return openRaw(family);
}

FileDescriptor acceptClient(int listener) {
  FileDescriptor client = acceptRaw(listener);
  if (!client.isOpen()) return client;
  setOption(client, IPPROTO_TCP, TCP_NODELAY, 1);
  setOption(client, SOL_SOCKET, SO_KEEPALIVE, 1);
  setOption(client, IPPROTO_TCP, kKeepAliveIdleSeconds, 60);
  setOption(client, IPPROTO_TCP, TCP_KEEPINTVL, 10);
  setOption(client, IPPROTO_TCP, TCP_KEEPCNT, 6);
#ifdef SO_NOSIGPIPE
  setOption(client, SOL_SOCKET, SO_NOSIGPIPE, 1);
#endif
  return client;
}

bool makeNonBlocking(int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  return flags != -1 && fcntl(descriptor, F_SETFL, flags | O_NONBLOCK) != -1;
}

ssize_t sendWithoutSignal(int connection, std::string_view data) {
  return ::send(connection, data.data(), data.size(), kSendFlags);
}

}  // namespace tarni
