// LoopbackClient: the other end of a socket under test, blocking and as plain as can be.
#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

namespace tarni::test {

class LoopbackClient {
 public:
  LoopbackClient() = default;
  explicit LoopbackClient(std::uint16_t port, int family = AF_INET) : family_(family) {
    connect(port);
  }
  ~LoopbackClient() { leave(); }
  LoopbackClient(const LoopbackClient&) = delete;
  LoopbackClient& operator=(const LoopbackClient&) = delete;

  // False when nobody listens.
  bool connect(std::uint16_t port) const {
    sockaddr_in address4{};
    address4.sin_family = AF_INET;
    address4.sin_port = htons(port);
    address4.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    sockaddr_in6 address6{};
    address6.sin6_family = AF_INET6;
    address6.sin6_port = htons(port);
    address6.sin6_addr = in6addr_loopback;
    return family_ == AF_INET
               ? ::connect(descriptor_, reinterpret_cast<sockaddr*>(&address4), sizeof address4) ==
                     0
               : ::connect(descriptor_, reinterpret_cast<sockaddr*>(&address6), sizeof address6) ==
                     0;
  }

  static bool isListening(std::uint16_t port) { return LoopbackClient().connect(port); }
  // For a port that is about to listen; false when it does not for a long time.
  bool connectSoon(std::uint16_t port) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!connect(port)) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
  }

  void send(const std::string& bytes) const {
    for (std::size_t done = 0; done < bytes.size();) {
      const ssize_t sent =
          ::send(descriptor_, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
      if (sent <= 0) return;
      done += static_cast<std::size_t>(sent);
    }
  }

  // So many bytes, fewer when the peer closes or sends nothing for a long time.
  std::string read(std::size_t count) const {
    std::string bytes(count, '\0');
    std::size_t done = 0;
    while (done < count && waitReadable()) {
      const ssize_t length = recv(descriptor_, bytes.data() + done, count - done, 0);
      if (length <= 0) break;
      done += static_cast<std::size_t>(length);
    }
    bytes.resize(done);
    return bytes;
  }
  // The payload of a framed message.
  std::string readMessage() const {
    const std::string length = read(10);
    return length.size() == 10 ? read(std::stoul(length)) : "";
  }
  // True once the peer has closed; what it sent before is dropped.
  bool seesClose() const {
    std::string dropped(64UL * 1024, '\0');
    while (waitReadable()) {
      if (recv(descriptor_, dropped.data(), dropped.size(), 0) <= 0) return true;
    }
    return false;
  }

  // A forked child of the test may have a copy.
  void leave() {
    shutdown(descriptor_, SHUT_RDWR);
    drop();
  }
  // Leaves with a reset instead of an orderly end.
  void reset() {
    const linger abort{1, 0};
    setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
    drop();
  }

 private:
  void drop() {
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
  }
  bool waitReadable() const {
    pollfd readable{descriptor_, POLLIN, 0};
    return poll(&readable, 1, 20'000) > 0;
  }

  int family_ = AF_INET;
  int descriptor_ = socket(family_, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

}  // namespace tarni::test
