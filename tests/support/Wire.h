// Wire: one raw connection to the agent, as plain as a socket, so that tests see the bytes.
#pragma once

#include <sys/socket.h>

#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Program.h"

namespace tarni::test {

inline constexpr std::uint16_t kRecorderPort = 9892;
inline constexpr std::uint16_t kPlaybackPort = 9898;

class Wire {
 public:
  // Has its descriptor, and no peer.
  Wire();
  // Connects to this machine, trying again until the time-out. Throws std::runtime_error.
  explicit Wire(std::uint16_t port, std::chrono::milliseconds timeout = kPatience,
                int family = AF_INET);
  // The same, to a socket in the file system.
  explicit Wire(const std::string& path);
  Wire(Wire&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Wire(const Wire&) = delete;
  ~Wire();

  // True when somebody accepts a connection right now.
  static bool accepts(std::uint16_t port);
  // False when nobody listens.
  bool connect(std::uint16_t port) const;

  void send(const std::string& bytes) const;
  void sendLine(const std::string& text) const { send(text + "\r\n"); }
  // Exactly `count` bytes. Throws when the peer closes or the time-out passes.
  std::string read(std::size_t count, std::chrono::milliseconds timeout = kPatience) const;
  // Up to the next line feed, without it. The same.
  std::string readLine() const;
  // The payload of the next framed message, which begins before the time-out.
  std::string readMessage(std::chrono::milliseconds timeout = kPatience) const;
  // True when something can be read right now.
  bool hasMore() const;
  // Sends no more, and goes on reading.
  void endSending() const { shutdown(descriptor_, SHUT_WR); }
  // True when the peer closed the connection within the time-out.
  bool isClosed(std::chrono::milliseconds timeout) const;
  // The same, without regard to what the peer sends before.
  bool seesClose() const;
  // Ends the connection, though a forked child may have a copy.
  void leave();
  // Leaves with a reset instead of an orderly end.
  void reset();

 private:
  // What is there, in the end at most `count` bytes; throws with `so far` when nothing comes.
  void readSome(std::string& into, std::size_t count,
                std::chrono::steady_clock::time_point deadline) const;
  void drop();

  int family_ = AF_INET;
  int descriptor_ = -1;
  mutable std::string ahead_;  // read behind the last line
};

// A playback connection with its greeting read, and the commands that tests use most.
class Playback {
 public:
  // With `greeted` false no greeting is expected: a later client of the same process gets none.
  explicit Playback(bool greeted = true);

  nlohmann::json ask(const nlohmann::json& keys) const;
  nlohmann::json command(const std::string& name, const std::string& value = "",
                         const std::string& data = "") const;
  // The identifiers of the elements found: in the key window, or where `window` says.
  std::vector<std::string> find(const std::string& tag, const std::string& type = "",
                                const std::string& value = "",
                                const std::string& window = "") const;
  // The elements of that class, or all, as they are described.
  nlohmann::json describe(const std::string& tag = "") const;
  // The only element found; throws when there is none or more than one.
  std::string one(const std::string& tag, const std::string& type = "",
                  const std::string& value = "") const;
  // The same, once it is there.
  std::string await(const std::string& tag, const std::string& type,
                    const std::string& value) const;
  // The first "output" of the command's answer; null when there is none.
  std::optional<std::string> output(const std::string& name, const std::string& value) const;
  const Wire& wire() const { return wire_; }

 private:
  Wire wire_;
};

}  // namespace tarni::test
