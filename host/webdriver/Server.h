// Server: WebDriver over HTTP: sessions, and the commands of the table. Made and served on one
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/http/Server.h"
#include "host/webdriver/Command.h"
#include "host/webdriver/Sessions.h"

namespace tarni::host::webdriver {

struct ServerOptions {
  std::string address = "127.0.0.1";
  std::uint16_t port = 4723;
  std::size_t mostSessions = 8;
  std::vector<std::string> origins = {};  // of pages that may ask
};

class Server {
 public:
  // Takes the port. Throws std::runtime_error.
  explicit Server(const ServerOptions& options);

  std::string url() const { return server_.url(); }
  // Until `stop`, which may be called on any thread and ends all sessions.
  void serve() { server_.serve(); }
  void stop();

 private:
  http::Routes routes();
  http::Reply create(const http::Request& request);
  http::Reply end(const http::Request& request);
  http::Reply status();
  http::Reply run(const Command& command, const http::Request& request);

  Sessions sessions_;
  http::Server server_;
};

}  // namespace tarni::host::webdriver
