#include "tests/host/ScriptedAgent.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace tarni::test {

bool ScriptedAgent::Peer::send(const std::string& bytes) const {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const auto count = ::send(descriptor_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

std::string ScriptedAgent::Peer::readLine() {
  while (true) {
    if (const auto end = pending_.find('\n'); end != std::string::npos) {
      auto line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      if (line.ends_with('\r')) line.pop_back();
      return line;
    }
    std::array<char, 4096> bytes{};
    const auto count = recv(descriptor_, bytes.data(), bytes.size(), 0);
    if (count <= 0) return "";
    pending_.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

ScriptedAgent::ScriptedAgent(std::uint16_t port, Script script, int connections)
    : script_(std::move(script)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const int on = 1;
  setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_, 1) != 0) {
    throw std::runtime_error("the scripted agent cannot listen");
  }
  thread_ = std::thread([this, connections] { serve(connections); });
}

ScriptedAgent::~ScriptedAgent() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void ScriptedAgent::serve(int connections) const {
  for (int i = 0; i < connections; ++i) {
    const int descriptor = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (descriptor < 0) return;
    if (i + 1 == connections) shutdown(listener_, SHUT_RDWR);
    Peer peer(descriptor);
    script_(peer);
    close(descriptor);
  }
}

std::string ScriptedAgent::framed(const std::string& payload) {
  std::array<char, 16> length{};
  std::snprintf(length.data(), length.size(), "%010zu", payload.size());
  return length.data() + payload;
}

ScriptedAgent::Script answering(std::function<std::string(const std::string& line)> answer) {
  return [answer = std::move(answer)](ScriptedAgent::Peer& peer) {
    for (auto line = peer.readLine(); !line.empty(); line = peer.readLine()) {
      peer.sendFramed(answer(line));
    }
  };
}

}  // namespace tarni::test
