// Configuration: the files that Selenium Grid reads, for a hub and for a node that passes sessions
// on to a WebDriver server. Plain values, any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tarni::host::grid {

inline constexpr std::uint16_t kHubPort = 4444;
inline constexpr std::uint16_t kNodePort = 5555;

// Takes the two ports below its own as well, for its events.
struct Hub {
  std::string address = "127.0.0.1";  // which nodes and clients reach it at
  std::uint16_t port = kHubPort;

  std::string url() const;
  std::string file() const;  // hub.toml
};

struct Node {
  Hub hub = {};
  std::string address = "127.0.0.1";  // which the hub reaches it at
  std::uint16_t port = kNodePort;
  std::size_t slots = 8;
  std::string relay = {};  // the URL of the WebDriver server

  std::string file() const;  // node.toml
};

// "10.0.0.1", "10.0.0.1:4444" or "http://10.0.0.1:4444". Throws std::invalid_argument.
Hub hubAt(const std::string& text);

// Throws std::invalid_argument unless others can reach a machine at it: it goes into the files.
void requireAddress(const std::string& address);

}  // namespace tarni::host::grid
