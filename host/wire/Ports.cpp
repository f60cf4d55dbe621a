#include "host/wire/Ports.h"

#include <array>
#include <fstream>
#include <limits>
#include <sstream>

namespace tarni::host {

namespace {

constexpr auto kEstablished = "01";
constexpr auto kListening = "0A";

// One line of the kernel's table: "  0: 0100007F:26AA 00000000:0000 0A …", all in hexadecimal.
bool isOfPort(const std::string& localAddress, std::uint16_t port) {
  const auto colon = localAddress.rfind(':');
  return colon != std::string::npos &&
         std::stoul(localAddress.substr(colon + 1), nullptr, 16) == port;
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

}  // namespace tarni::host
