#include "host/grid/Configuration.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string_view>

#include "host/guard/Text.h"

namespace tarni::host::grid {

namespace {

constexpr int kPortsOfEvents = 2;

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string serverPart(const std::string& address, std::uint16_t port) {
  return "[server]\nhost = " + quoted(address) + "\nport = " + std::to_string(port) + "\n";
}

std::string eventsPart(const Hub& hub) {
  const auto at = [&hub](int below) {
    return quoted("tcp://" + hub.address + ":" + std::to_string(hub.port - below));
  };
  return "[events]\npublish = " + at(kPortsOfEvents) + "\nsubscribe = " + at(1) + "\n";
}

}  // namespace

std::string Hub::url() const {
  return "http://" + address + ":" + std::to_string(port);
}

// A request that no node could serve is refused at once instead of waiting for its end.
std::string Hub::file() const {
  return "# The hub of a Selenium Grid; written by `tarni grid hub`.\n" +
         serverPart(address, port) + eventsPart(*this) +
         "bind = true\n"
         "[distributor]\n"
         "reject-unsupported-caps = true\n"
         "healthcheck-interval = 15\n"
         "[sessionqueue]\n"
         "session-request-timeout = 300\n";
}

// Without override-max-sessions a node offers no more slots than the machine has cores. What stands
// in the configuration of a slot overrides what a client asks for, so it holds no program.
std::string Node::file() const {
  const auto count = std::to_string(slots);
  return "# A node of a Selenium Grid; written by `tarni grid node`.\n" +
         serverPart(address, port) + eventsPart(hub) +
         "[node]\n"
         "detect-drivers = false\n"
         "max-sessions = " +
         count +
         "\n"
         "override-max-sessions = true\n"
         "session-timeout = 300\n"
         "heartbeat-period = 10\n"
         "grid-url = " +
         quoted(hub.url()) +
         "\n"
         "[relay]\n"
         "url = " +
         quoted(relay) +
         "\n"
         "status-endpoint = \"/status\"\n"
         "protocol-version = \"HTTP/1.1\"\n"
         "configs = [ " +
         quoted(count) +
         R"(, "{\"platformName\": \"linux\", \"appium:automationName\": \"Tarni\"}" ])"
         "\n";
}

Hub hubAt(const std::string& text) {
  std::string_view rest = text;
  constexpr std::string_view kScheme = "http://";
  if (rest.starts_with(kScheme)) rest.remove_prefix(kScheme.size());
  while (rest.ends_with('/')) rest.remove_suffix(1);
  Hub hub;
  const auto colon = rest.find(':');
  if (colon != std::string_view::npos) {
    hub.port = wholeNumberIn<std::uint16_t>(rest.substr(colon + 1)).value_or(0);
    if (hub.port <= kPortsOfEvents) {
      throw std::invalid_argument("a hub is ADDRESS or ADDRESS:PORT, not " + text);
    }
  }
  hub.address = rest.substr(0, colon);
  requireAddress(hub.address);
  return hub;
}

void requireAddress(const std::string& address) {
  const bool isName = !address.empty() && std::ranges::all_of(address, [](unsigned char c) {
    return std::isalnum(c) != 0 || c == '.' || c == '-';
  });
  if (isName && address != "0.0.0.0") return;
  throw std::invalid_argument("\"" + address +
                              "\" is no address at which other machines reach this one: give its "
                              "name, or the number that `hostname -I` prints");
}

}  // namespace tarni::host::grid
