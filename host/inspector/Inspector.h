// Inspector: the page and what it asks for, over HTTP on this machine. Every path begins with a
// token that nobody can guess, and only this server's own page may ask. Made and served on one
// thread; requests are answered on many.
#pragma once

#include <string>

#include "host/http/Server.h"
#include "host/inspector/Calls.h"
#include "host/inspector/Feed.h"

namespace tarni::host {

class Inspector {
 public:
  // Throws std::runtime_error: another program has the port, or there is no page in this build.
  Inspector(Feed& feed, std::uint16_t port);

  // Where a browser finds the page.
  std::string address() const;
  // Until `stop`, which is for any thread.
  void serve() { server_.serve(); }
  void stop() { server_.stop(); }

 private:
  using Request = http::Request;
  using Reply = http::Reply;

  http::Routes routes();
  http::Handler guarded(Reply (Inspector::*answer)(const Request&));
  Reply file(const Request& request);
  Reply events(const Request& request);
  Reply programs(const Request& request);
  Reply inspect(const Request& request);
  Reply start(const Request& request);
  Reply record(const Request& request);
  Reply play(const Request& request);
  Reply openSession(const Request& request);
  Reply exportTest(const Request& request);
  Reply call(const Request& request);
  Reply locators(const Request& request);
  Reply find(const Request& request);
  std::string session();

  Feed& feed_;
  Calls calls_;
  Calls hands_;  // what is held down is held by a connection
  const std::string token_;
  http::Server server_;
};

}  // namespace tarni::host
