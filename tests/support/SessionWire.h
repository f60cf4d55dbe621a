// SessionWire: one client of the session channel, as plain as a socket.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace tarni::test {

// A folder of this user's alone, gone with its owner.
class SessionFolder {
 public:
  SessionFolder();
  SessionFolder(const SessionFolder&) = delete;
  ~SessionFolder();
  std::string socket() const { return path_ / "test.session"; }

 private:
  std::filesystem::path path_;
};

class SessionWire {
 public:
  // Connects, trying again until the program listens. Throws std::runtime_error.
  explicit SessionWire(const std::string& path);
  SessionWire(const SessionWire&) = delete;
  ~SessionWire();

  void sendRaw(const std::string& bytes) const;
  void sendLine(const std::string& line) const { sendRaw(line + "\n"); }
  void send(const std::string& method, const nlohmann::json& parameters, int id) const;
  // The next message. Throws when the channel closes or nothing comes for 20 s.
  nlohmann::json answer() const;
  // The result; throws with the whole answer when it is an error.
  nlohmann::json ask(const std::string& method, const nlohmann::json& parameters) const;

 private:
  int descriptor_ = -1;
  mutable std::string read_;
};

}  // namespace tarni::test
