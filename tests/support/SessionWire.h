// SessionWire: one client of the session channel, as plain as a socket.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/Files.h"
#include "tests/support/Wire.h"

namespace tarni::test {

class SessionFolder : public Folder {
 public:
  SessionFolder() : socket_(path / "test.session") {}
  const std::string& socket() const { return socket_; }

 private:
  const std::string socket_;
};

class SessionWire {
 public:
  // Connects, trying again until the program listens. Throws std::runtime_error.
  explicit SessionWire(const std::string& path) : wire_(path) {}

  void sendRaw(const std::string& bytes) const { wire_.send(bytes); }
  void sendLine(const std::string& line) const { sendRaw(line + "\n"); }
  void send(const std::string& method, const nlohmann::json& parameters, int id) const;
  // True when a message has come, or begun to.
  bool hasAnswer() const { return wire_.hasMore(); }
  // The next message. Throws when the channel closes or nothing comes.
  nlohmann::json answer() const { return nlohmann::json::parse(wire_.readLine()); }
  // The result; throws with the whole answer when it is an error.
  nlohmann::json ask(const std::string& method, const nlohmann::json& parameters) const;
  // The first element that fits; null when none does.
  nlohmann::json find(nlohmann::json selector) const;
  // Until the condition holds. Throws when it does not come to that.
  void await(const nlohmann::json& condition, int milliseconds = 10'000) const;
  // The parameters of the notifications that came before answers of `ask`.
  const std::vector<nlohmann::json>& told() const { return told_; }

 private:
  Wire wire_;
  mutable std::vector<nlohmann::json> told_;
};

}  // namespace tarni::test
