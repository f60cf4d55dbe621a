#include "tests/support/SessionWire.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "tests/support/Program.h"

namespace tarni::test {
namespace {

int connected(const std::string& path) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  path.copy(name.sun_path, sizeof name.sun_path - 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0) {
    return descriptor;
  }
  close(descriptor);
  return -1;
}

}  // namespace

SessionFolder::SessionFolder() {
  char path[] = "/tmp/tarni-session-XXXXXX";
  if (!mkdtemp(path)) throw std::runtime_error("no folder for the session channel");
  path_ = path;
}

SessionFolder::~SessionFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

SessionWire::SessionWire(const std::string& path) {
  if (!eventually([&] { return (descriptor_ = connected(path)) >= 0; })) {
    throw std::runtime_error("nobody listens at " + path);
  }
}

SessionWire::~SessionWire() {
  close(descriptor_);
}

void SessionWire::sendRaw(const std::string& bytes) const {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count =
        ::send(descriptor_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count < 0) throw std::runtime_error("the session channel has closed");
    sent += static_cast<std::size_t>(count);
  }
}

void SessionWire::send(const std::string& method, const nlohmann::json& parameters, int id) const {
  sendLine(
      nlohmann::json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", parameters}}
          .dump());
}

nlohmann::json SessionWire::answer() const {
  std::size_t end = 0;
  while ((end = read_.find('\n')) == std::string::npos) {
    pollfd readable{descriptor_, POLLIN, 0};
    char bytes[65536];
    const bool isThere =
        poll(&readable, 1, static_cast<int>(std::chrono::milliseconds(kPatience).count())) == 1;
    const ssize_t count = isThere ? recv(descriptor_, bytes, sizeof bytes, 0) : 0;
    if (count <= 0) throw std::runtime_error("no answer from the session channel");
    read_.append(bytes, static_cast<std::size_t>(count));
  }
  const std::string line = read_.substr(0, end);
  read_.erase(0, end + 1);
  return nlohmann::json::parse(line);
}

nlohmann::json SessionWire::ask(const std::string& method, const nlohmann::json& parameters) const {
  send(method, parameters, 1);
  const nlohmann::json answered = answer();
  if (!answered.contains("result")) throw std::runtime_error(method + ": " + answered.dump());
  return answered["result"];
}

}  // namespace tarni::test
