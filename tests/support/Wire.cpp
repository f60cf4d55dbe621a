#include "tests/support/Wire.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace tarni::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kPiece = 65536;

bool waitReadable(int descriptor, milliseconds timeout) {
  pollfd waiting{descriptor, POLLIN, 0};
  return poll(&waiting, 1, static_cast<int>(timeout.count())) == 1;
}

}  // namespace

Wire::Wire() : descriptor_(socket(family_, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}

Wire::Wire(std::uint16_t port, milliseconds timeout, int family)
    : family_(family), descriptor_(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (!eventually([&] { return connect(port); }, timeout)) {
    throw std::runtime_error("nothing listens on " + std::to_string(port));
  }
}

Wire::Wire(const std::string& path)
    : family_(AF_UNIX), descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  path.copy(name.sun_path, sizeof name.sun_path - 1);
  const auto listens = [&] {
    return ::connect(descriptor_, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0;
  };
  if (!eventually(listens)) {
    throw std::runtime_error("nobody listens at " + path);
  }
}

Wire::~Wire() {
  drop();
}

bool Wire::accepts(std::uint16_t port) {
  return Wire().connect(port);
}

bool Wire::connect(std::uint16_t port) const {
  sockaddr_in address4{};
  address4.sin_family = AF_INET;
  address4.sin_port = htons(port);
  address4.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  sockaddr_in6 address6{};
  address6.sin6_family = AF_INET6;
  address6.sin6_port = htons(port);
  address6.sin6_addr = in6addr_loopback;
  const bool isOld = family_ == AF_INET;
  const void* const address = isOld ? static_cast<const void*>(&address4) : &address6;
  return ::connect(descriptor_, static_cast<const sockaddr*>(address),
                   isOld ? sizeof address4 : sizeof address6) == 0;
}

void Wire::send(const std::string& bytes) const {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t now = ::send(descriptor_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (now < 0) throw std::runtime_error("the connection broke while sending");
    sent += static_cast<std::size_t>(now);
  }
}

void Wire::readSome(std::string& into, std::size_t count, steady_clock::time_point deadline) const {
  const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
  if (left.count() <= 0 || !waitReadable(descriptor_, left)) {
    throw std::runtime_error("no answer in time; so far: " + into);
  }
  const std::size_t before = into.size();
  into.resize(before + count);
  const ssize_t now = recv(descriptor_, into.data() + before, count, 0);
  into.resize(before + static_cast<std::size_t>(std::max<ssize_t>(now, 0)));
  if (now <= 0) throw std::runtime_error("closed by the peer; so far: " + into);
}

std::string Wire::read(std::size_t count, milliseconds timeout) const {
  const auto deadline = steady_clock::now() + timeout;
  std::string bytes;
  bytes.reserve(count);
  while (bytes.size() < count) readSome(bytes, std::min(count - bytes.size(), kPiece), deadline);
  return bytes;
}

std::string Wire::readLine() const {
  const auto deadline = steady_clock::now() + kPatience;
  std::size_t end = 0;
  while ((end = ahead_.find('\n')) == std::string::npos) readSome(ahead_, kPiece, deadline);
  std::string line = ahead_.substr(0, end);
  ahead_.erase(0, end + 1);
  return line;
}

std::string Wire::readMessage(milliseconds timeout) const {
  const std::string length = read(10, timeout);
  if (length.find_first_not_of("0123456789") != std::string::npos) {
    throw std::runtime_error("not a length: " + length);
  }
  return read(std::stoul(length));
}

bool Wire::hasMore() const {
  return !ahead_.empty() || waitReadable(descriptor_, milliseconds(0));
}

bool Wire::isClosed(milliseconds timeout) const {
  char byte = 0;
  return waitReadable(descriptor_, timeout) && recv(descriptor_, &byte, 1, MSG_PEEK) <= 0;
}

bool Wire::seesClose() const {
  std::string dropped(64UL * 1024, '\0');
  while (waitReadable(descriptor_, kPatience)) {
    if (recv(descriptor_, dropped.data(), dropped.size(), 0) <= 0) return true;
  }
  return false;
}

void Wire::leave() {
  shutdown(descriptor_, SHUT_RDWR);
  drop();
}

void Wire::reset() {
  const linger abort{1, 0};
  setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
  drop();
}

void Wire::drop() {
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
}

Playback::Playback(bool greeted) : wire_(kPlaybackPort) {
  if (greeted) wire_.readMessage();
}

nlohmann::json Playback::ask(const nlohmann::json& keys) const {
  wire_.sendLine(keys.dump());
  return nlohmann::json::parse(wire_.readMessage());
}

nlohmann::json Playback::command(const std::string& name, const std::string& value,
                                 const std::string& data) const {
  return ask({{"functionname", name}, {"accessorvalue", value}, {"datavalue", data}});
}

std::vector<std::string> Playback::find(const std::string& tag, const std::string& type,
                                        const std::string& value, const std::string& window) const {
  std::vector<std::string> identifiers;
  const nlohmann::json answer = ask({{"functionname", "findelements"},
                                     {"tagname", tag},
                                     {"accessortype", type},
                                     {"accessorvalue", value},
                                     {"window", window}});
  for (const auto& entry : answer) {
    if (!entry.contains("elementID")) throw std::runtime_error("not found but: " + answer.dump());
    identifiers.push_back(entry["elementID"]);
  }
  return identifiers;
}

nlohmann::json Playback::describe(const std::string& tag) const {
  return ask({{"functionname", "ai_findelements"}, {"tagname", tag}});
}

std::string Playback::one(const std::string& tag, const std::string& type,
                          const std::string& value) const {
  const std::vector<std::string> found = find(tag, type, value);
  if (found.size() != 1) {
    throw std::runtime_error(std::to_string(found.size()) + " elements are " + tag + " with " +
                             type + " " + value);
  }
  return found.front();
}

std::string Playback::await(const std::string& tag, const std::string& type,
                            const std::string& value) const {
  eventually([&] { return find(tag, type, value).size() == 1; });
  return one(tag, type, value);
}

std::optional<std::string> Playback::output(const std::string& name,
                                            const std::string& value) const {
  const nlohmann::json answer = command(name, value);
  if (answer.empty() || !answer[0].contains("output")) return std::nullopt;
  return answer[0]["output"].get<std::string>();
}

}  // namespace tarni::test
