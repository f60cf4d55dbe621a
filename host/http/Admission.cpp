#include "host/http/Admission.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tarni::host::http {

namespace {

constexpr std::string_view kJson = "application/json";

std::string nameIn(const std::string& host) {
  if (host.starts_with('[')) return host.substr(1, host.find(']') - 1);
  return host.substr(0, host.find(':'));
}

bool isAddress(const std::string& name) {
  in6_addr address{};
  return inet_pton(AF_INET, name.c_str(), &address) == 1 ||
         inet_pton(AF_INET6, name.c_str(), &address) == 1;
}

// A name of another machine's may be pointed at this one; an address cannot.
bool isThisMachine(const std::string& host) {
  const auto name = nameIn(host);
  std::array<char, 256> own{};
  gethostname(own.data(), own.size() - 1);
  return name == "localhost" || name == own.data() || isAddress(name);
}

bool isJson(const std::string& type) {
  return type.starts_with(kJson) && (type.size() == kJson.size() || type[kJson.size()] == ';');
}

bool mayHaveBody(const std::string& method) {
  return method == "POST" || method == "PUT" || method == "PATCH" || method == "DELETE";
}

}  // namespace

Admission::Admission(std::vector<std::string> origins) : origins_(std::move(origins)) {}

bool Admission::allowsOrigin(const std::string& origin) const {
  return std::ranges::any_of(
      origins_, [&origin](const std::string& one) { return one == "*" || one == origin; });
}

std::optional<Refusal> Admission::refusal(const Asking& asking) const {
  if (!isThisMachine(asking.host)) {
    return Refusal{403, "the header Host names another machine: \"" + asking.host + "\""};
  }
  const bool isOwn = asking.origin.empty() || asking.origin == "http://" + asking.host;
  if (!isOwn && !allowsOrigin(asking.origin)) {
    return Refusal{403, "pages of " + asking.origin + " are not allowed to ask"};
  }
  // The library would take it for the next request.
  if (asking.hasBody && !mayHaveBody(asking.method)) {
    return Refusal{400, "a " + asking.method + " has no body"};
  }
  if (asking.hasBody && !isJson(asking.contentType)) {
    return Refusal{415, "a body is JSON, of the type application/json"};
  }
  return std::nullopt;
}

}  // namespace tarni::host::http
