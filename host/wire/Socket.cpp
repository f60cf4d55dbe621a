#include "host/wire/Socket.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "host/wire/Ports.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPauseBetweenAttempts{20};

// A port that stops listening at this very moment may leave an attempt without any answer.
constexpr milliseconds kLongestAttempt{200};

std::string reason(int error) {
  return std::system_category().message(error);
}

// At least one millisecond while time is left, so that a wait never spins.
int millisecondsUntil(Deadline deadline) {
  const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, 1'000'000'000));
}

// Polls until something happens or the deadline passes; false at the deadline.
bool pollUntil(std::span<pollfd> entries, Deadline deadline) {
  while (true) {
    const int count = poll(entries.data(), entries.size(), millisecondsUntil(deadline));
    if (count > 0) return true;
    if (count == 0) return false;
    if (errno != EINTR) throw WireError("cannot wait for the agent: " + reason(errno));
  }
}

// The error of one attempt to connect, 0 for success.
int connectTo(int descriptor, const sockaddr* address, socklen_t size, Deadline deadline) {
  if (connect(descriptor, address, size) == 0) return 0;
  if (errno != EINPROGRESS) return errno;
  pollfd entry{descriptor, POLLOUT, 0};
  if (!pollUntil({&entry, 1}, deadline)) return ETIMEDOUT;
  int error = 0;
  socklen_t length = sizeof error;
  getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length);
  return error;
}

struct Attempt {
  int descriptor = -1;
  int error = 0;
};

Attempt attempt(int family, const sockaddr* address, socklen_t size, Deadline deadline) {
  const int descriptor = socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (descriptor < 0) return {-1, errno};
  const int error = connectTo(descriptor, address, size, deadline);
  if (error != 0) {
    close(descriptor);
    return {-1, error};
  }
  const int on = 1;
  setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return {descriptor, 0};
}

Attempt attemptEitherFamily(std::uint16_t port, Deadline deadline) {
  sockaddr_in four{};
  four.sin_family = AF_INET;
  four.sin_port = htons(port);
  four.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const auto first =
      attempt(AF_INET, reinterpret_cast<const sockaddr*>(&four), sizeof four, deadline);
  if (first.descriptor >= 0) return first;
  sockaddr_in6 six{};
  six.sin6_family = AF_INET6;
  six.sin6_port = htons(port);
  six.sin6_addr = in6addr_loopback;
  const auto second =
      attempt(AF_INET6, reinterpret_cast<const sockaddr*>(&six), sizeof six, deadline);
  return second.descriptor >= 0 ? second : first;
}

std::string explanation(std::uint16_t port, int error) {
  const auto number = std::to_string(port);
  if (portUse(port) == PortUse::Held) {
    return "the connection to port " + number +
           " was refused: another client holds it (a port serves one client at a time)";
  }
  if (error != ECONNREFUSED) return "cannot connect to port " + number + ": " + reason(error);
  if (port == kRecorderPort && portUse(kPlaybackPort) == PortUse::Listening) {
    return "nothing listens on " + number +
           ": a program's recorder serves one client only, and ends with the first playback "
           "command or as a playback client leaves; start the program anew";
  }
  return "nothing listens on " + number +
         ": is the program running with the agent, as `tarni run` starts it?";
}

std::string explanation(const std::string& path, int error) {
  const bool isMissing = error == ENOENT || error == ECONNREFUSED;
  return isMissing ? "nothing listens at " + path + ": is the program running with the agent?"
                   : "cannot connect to " + path + ": " + reason(error);
}

// The descriptor of the first attempt that succeeds.
template <typename TryOnce, typename Place>
int connectBy(Deadline deadline, const Place& place, const TryOnce& tryOnce) {
  while (true) {
    const auto result = tryOnce(std::min(deadline, Clock::now() + kLongestAttempt));
    if (result.descriptor >= 0) return result.descriptor;
    if (Clock::now() >= deadline) throw WireError(explanation(place, result.error));
    std::this_thread::sleep_for(kPauseBetweenAttempts);
  }
}

}  // namespace

Socket Socket::connectToThisMachine(std::uint16_t port, Deadline deadline) {
  return Socket(connectBy(deadline, port,
                          [port](Deadline moment) { return attemptEitherFamily(port, moment); }));
}

Socket Socket::connectToPath(const std::string& path, Deadline deadline) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof name.sun_path) {
    throw WireError("\"" + path + "\" cannot be the path of a socket");
  }
  path.copy(name.sun_path, path.size());
  return Socket(connectBy(deadline, path, [&name](Deadline moment) {
    return attempt(AF_UNIX, reinterpret_cast<const sockaddr*>(&name), sizeof name, moment);
  }));
}

Socket::Socket(Socket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

Socket& Socket::operator=(Socket&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

Socket::~Socket() {
  if (descriptor_ >= 0) close(descriptor_);
}

void Socket::write(std::string_view bytes, Deadline deadline) {
  while (!bytes.empty()) {
    const auto count = send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      pollfd entry{descriptor_, POLLOUT, 0};
      if (!pollUntil({&entry, 1}, deadline)) {
        throw WireError("the program did not take the command in time: is it busy or stopped?");
      }
    } else if (errno != EINTR) {
      throw WireError("the program closed the connection: " + reason(errno));
    }
  }
}

Socket::Ready Socket::waitForData(Deadline deadline, std::span<const int> wakeOn) {
  std::vector<pollfd> entries{{descriptor_, POLLIN, 0}};
  for (const int descriptor : wakeOn) entries.push_back({descriptor, POLLIN, 0});
  if (!pollUntil(entries, deadline)) return Ready::TimedOut;
  return entries.front().revents != 0 ? Ready::Data : Ready::Woken;
}

void Socket::shutDown() {
  shutdown(descriptor_, SHUT_RDWR);
}

std::string Socket::read() {
  std::string bytes(std::size_t{256} * 1024, '\0');
  while (true) {
    const auto count = recv(descriptor_, bytes.data(), bytes.size(), 0);
    if (count >= 0) {
      bytes.resize(static_cast<std::size_t>(count));
      return bytes;
    }
    if (errno != EINTR) throw WireError("the program closed the connection: " + reason(errno));
  }
}

}  // namespace tarni::host
