#include "host/wire/Ports.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>
#include <system_error>
#include <vector>

#include "host/guard/Text.h"

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

constexpr auto kEstablished = "01";
constexpr auto kListening = "0A";

// One line of the kernel's table: "  0: 0100007F:26AA 00000000:0000 0A …", all in hexadecimal.
bool isOfPort(const std::string& localAddress, std::uint16_t port) {
  const auto colon = localAddress.rfind(':');
  return colon != std::string::npos &&
         std::stoul(localAddress.substr(colon + 1), nullptr, 16) == port;
}

// What a descriptor of a socket links to, "socket:[12345]", for every socket on the port.
std::set<std::string> socketsOn(std::uint16_t port) {
  std::set<std::string> sockets;
  for (const auto* table : {"/proc/self/net/tcp", "/proc/self/net/tcp6"}) {
    std::ifstream file(table);
    std::string line;
    std::getline(file, line);  // the heading
    while (std::getline(file, line)) {
      std::istringstream fields(line);
      const std::vector<std::string> values{std::istream_iterator<std::string>(fields), {}};
      constexpr std::size_t kLocal = 1;
      constexpr std::size_t kInode = 9;
      if (values.size() <= kInode) continue;
      if (isOfPort(values[kLocal], port) && values[kInode] != "0") {
        sockets.insert("socket:[" + values[kInode] + "]");
      }
    }
  }
  return sockets;
}

bool holdsOneOf(const std::set<std::string>& sockets, const fs::path& process) {
  std::error_code error;
  for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code gone;
    if (sockets.contains(fs::read_symlink(entry->path(), gone).string())) return true;
  }
  return false;
}

}  // namespace

PortUse portUse(std::uint16_t port, const std::string& networkOf) {
  auto use = PortUse::Unknown;
  for (const auto* table : {"tcp", "tcp6"}) {
    std::ifstream file("/proc/" + networkOf + "/net/" + table);
    if (!file) continue;
    if (use == PortUse::Unknown) use = PortUse::Free;
    file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    std::string line;
    while (std::getline(file, line)) {
      std::istringstream fields(line);
      std::string slot;
      std::string local;
      std::string remote;
      std::string state;
      if (!(fields >> slot >> local >> remote >> state) || !isOfPort(local, port)) continue;
      if (state == kListening) return PortUse::Listening;
      if (state == kEstablished) use = PortUse::Held;
    }
  }
  return use;
}

std::optional<pid_t> processServing(std::uint16_t port) {
  const auto sockets = socketsOn(port);
  if (sockets.empty()) return std::nullopt;
  std::error_code error;
  for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
       entry.increment(error)) {
    const auto pid = wholeNumberIn<pid_t>(entry->path().filename().string());
    if (pid && holdsOneOf(sockets, entry->path())) return pid;
  }
  return std::nullopt;
}

}  // namespace tarni::host
