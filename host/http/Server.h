// Server: an HTTP server of this tool: a table of routes, or a folder of files, or both. What no
// route answers, what is not to be answered and what a handler throws become errors in the owner's
// own form. Made, listened with and destroyed on one thread; handlers run on many, one a
// connection.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/http/Admission.h"
#include "host/http/Message.h"
#include "host/http/Routes.h"

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace tarni::host::http {

// 404 for an unknown path, 405 for another method, 400, 403, 413, 415, 500.
using ErrorReply = std::function<Reply(int status, const std::string& sentence)>;

Reply plainError(int status, const std::string& sentence);

struct Setup {
  std::string address = "127.0.0.1";
  std::uint16_t port = 0;                 // 0 for a free one
  std::vector<std::string> origins = {};  // of pages that may ask; see Admission
  std::filesystem::path folder = {};      // whose files are offered; empty for none
  ErrorReply error = plainError;
};

class Server {
 public:
  // Takes the port, but answers nothing yet. Throws std::runtime_error: another one has it.
  Server(Setup setup, Routes routes);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

  std::uint16_t port() const { return port_; }
  // "http://127.0.0.1:4723".
  std::string url() const;

  // Until `stop`.
  void serve();
  // On any thread.
  void stop();

 private:
  using Taken = httplib::Request;
  using Given = httplib::Response;

  void configure();
  void listenOn(int port);
  bool refuse(const Taken& taken, Given& given) const;
  void answer(const Taken& taken, Given& given) const;
  Reply replyTo(const Taken& taken) const;
  void put(const Reply& reply, const Taken& taken, Given& given) const;
  void stream(const NextEvent& next, Given& given) const;

  Setup setup_;
  Routes routes_;
  Admission admission_;
  std::unique_ptr<httplib::Server> library_;
  std::uint16_t port_ = 0;
  std::atomic<bool> isStopping_ = false;
};

}  // namespace tarni::host::http
