#include "host/http/ThreadPerConnection.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>

namespace tarni::host::http {

namespace {

constexpr std::size_t kMostConnections = 256;

std::uint16_t portOf(int socket) {
  sockaddr_in6 address{};
  socklen_t size = sizeof address;
  if (getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
  const bool isInternet = address.sin6_family == AF_INET || address.sin6_family == AF_INET6;
  return isInternet ? ntohs(address.sin6_port) : 0;  // stands at one place in both
}

// The library waits minutes for the next request of a connection, and tells nobody its sockets.
void endRequests(std::uint16_t port) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    const int socket = std::atoi(entry.path().filename().c_str());
    if (portOf(socket) == port) ::shutdown(socket, SHUT_RD);
  }
}

}  // namespace

void ThreadPerConnection::enqueue(std::function<void()> serve) {
  std::unique_lock lock(mutex_);
  ended_.wait(lock, [this] { return count_ < kMostConnections; });
  ++count_;
  lock.unlock();
  const auto run = [this](const std::function<void()>& connection) {
    connection();
    const std::lock_guard guard(mutex_);
    --count_;
    ended_.notify_all();
  };
  try {
    std::thread(run, serve).detach();
  } catch (const std::system_error&) {
    run(serve);  // the system gives no more threads
  }
}

void ThreadPerConnection::shutdown() {
  endRequests(port_);
  std::unique_lock lock(mutex_);
  ended_.wait(lock, [this] { return count_ == 0; });
}

}  // namespace tarni::host::http
