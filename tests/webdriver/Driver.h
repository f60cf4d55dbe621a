// Driver: a server of WebDriver under test, and a client of it as plain as HTTP. A client is used
// by one thread.
#pragma once

#include <httplib.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/Program.h"

namespace tarni::test {

struct Answer {
  int status = 0;
  nlohmann::json value;
  std::string error() const { return value.is_object() ? value.value("error", "") : ""; }
};

class DriverClient {
 public:
  explicit DriverClient(int port);

  Answer ask(const std::string& method, const std::string& path, const std::string& body = "{}");
  // Throws with the answer when none is made.
  Answer newSession(const nlohmann::json& capabilities);
  // Within the last session.
  Answer inSession(const std::string& method, const std::string& path,
                   const std::string& body = "{}");
  // The identifier of an element.
  std::string element(const std::string& strategy, const std::string& value);

 private:
  httplib::Client client_;
  std::string session_;
};

class DriverServer {
 public:
  explicit DriverServer(const std::vector<std::string>& options = {},
                        const Program::Environment& environment = {});
  int port() const { return port_; }
  Program& program() { return program_; }

 private:
  Program program_;
  int port_ = 0;
};

struct Driver : DriverServer, DriverClient {
  explicit Driver(const std::vector<std::string>& options = {},
                  const Program::Environment& environment = {})
      : DriverServer(options, environment), DriverClient(port()) {}
};

bool isAlive(const nlohmann::json& process);

}  // namespace tarni::test
