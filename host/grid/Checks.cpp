#include "host/grid/Checks.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/guard/Descriptor.h"
#include "host/guard/Printable.h"
#include "host/http/Client.h"

namespace tarni::host::grid {

namespace {

[[noreturn]] void fail(const std::string& why) {
  throw std::runtime_error(why);
}

std::string versionOfHub(const Hub& hub) {
  const auto reply = http::ask(hub.url(), "/graphql", R"({"query": "{ grid { version } }"})");
  const auto said = readJson(reply.body);
  const auto version = textIn(objectIn(objectIn(said, "data"), "grid"), "version");
  return version.substr(0, version.find(' '));
}

}  // namespace

void requireRelay(const Node& node) {
  const auto reply = http::ask(node.relay, "/status");
  const auto said = readJson(reply.body);
  const auto& status = objectIn(said, "value");
  const auto& build = objectIn(status, "build");
  if (textIn(build, "name") != "Tarni") fail("no `tarni webdriver` answers at " + node.relay);
  if (const auto version = textIn(build, "version"); version != TARNI_VERSION) {
    fail("the server at " + node.relay + " is of version " + version + ", this is " TARNI_VERSION);
  }
  if (reply.status != 200) fail("no session can be started: " + textIn(status, "message"));
  const auto most = objectIn(status, "sessions").value("most", std::size_t{0});
  if (most < node.slots) {
    fail(counted(node.slots, "slot") + " are more than the server at " + node.relay + " allows, " +
         counted(most, "session") + ": start it with --max-sessions " + std::to_string(node.slots) +
         ", or give --sessions " + std::to_string(most));
  }
}

void requireHub(const Hub& hub, const std::string& version) {
  std::string found;
  try {
    found = versionOfHub(hub);
  } catch (const std::runtime_error& error) {
    fail(std::string(error.what()) + ": start the hub first, by `tarni grid hub --address " +
         hub.address + "` there");
  }
  if (found.empty()) fail("no hub of Selenium Grid answers at " + hub.url());
  if (found != version) {
    fail("the hub at " + hub.url() + " is Selenium " + found + ", this machine has " + version +
         ": install one and the same");
  }
}

// A datagram socket is connected without a word to the other side.
std::string addressTowards(const std::string& host) {
  addrinfo wanted{};
  wanted.ai_family = AF_INET;
  wanted.ai_socktype = SOCK_DGRAM;
  addrinfo* list = nullptr;
  if (getaddrinfo(host.c_str(), "9", &wanted, &list) != 0) fail("no machine is called " + host);
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> found(list, freeaddrinfo);
  const Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  sockaddr_in own{};
  socklen_t size = sizeof own;
  std::array<char, INET_ADDRSTRLEN> text{};
  if (connect(socket.number(), found->ai_addr, found->ai_addrlen) != 0 ||
      getsockname(socket.number(), reinterpret_cast<sockaddr*>(&own), &size) != 0 ||
      inet_ntop(AF_INET, &own.sin_addr, text.data(), text.size()) == nullptr) {
    fail("there is no way to " + host);
  }
  return text.data();
}

}  // namespace tarni::host::grid
