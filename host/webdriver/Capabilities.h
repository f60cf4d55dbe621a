// Capabilities: what a client asks of a new session, matched as the standard says. Plain values,
// any thread.
#pragma once

#include <chrono>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host::webdriver {

struct Timeouts {
  using milliseconds = std::chrono::milliseconds;
  milliseconds implicit{0};
  milliseconds pageLoad{300'000};
  std::optional<milliseconds> script = milliseconds(30'000);  // null for never

  // The members of `object` that are there take effect. Throws Error ("invalid argument").
  void take(const Json& object);
  Json written() const;
};

struct Capabilities {
  std::vector<std::string> command;  // empty when a program that runs is attached to
  std::map<std::string, std::string> environment;
  std::string attach;       // the name, the process or the session channel of a program that runs
  std::string display;      // the size of a new one, "1280x800"; ":0", one that is there; "none"
  bool keepsState = false;  // the program has the user's own folders, not fresh ones
  std::string report;       // the folder for the session's report; empty for none
  bool startsInPage = false;
  std::chrono::seconds newCommandTimeout{60};  // 0 for never
  Timeouts timeouts;
  Json written;  // as they are answered

  // From the parameters of "New Session": of the first of `firstMatch` that fits. Throws Error:
  // "invalid argument" for what is malformed, "session not created" when none fits.
  static Capabilities match(const Json& parameters);
};

}  // namespace tarni::host::webdriver
