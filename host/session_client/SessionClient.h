// SessionClient: a connection to the session channel of a program (docs/session.md): requests with
// their answers, and the notifications in between. Whatever the other end sends, the client ends
// with an answer or one of the errors named here, and keeps a bounded amount of it. Used by
// everything on the host's side that works with a program by its session channel. Any thread, one
// at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

#include "host/guard/Json.h"
#include "host/wire/Socket.h"

namespace tarni::host {

// The program did not carry out a request; the text is its sentence about it, which came from
// outside.
class RequestError : public std::runtime_error {
 public:
  RequestError(std::string name, const std::string& sentence, Json data);

  // As docs/session.md lists them: "no such element", "timeout", …
  const std::string& name() const { return name_; }
  // All that the program tells about it: `conditions` of a wait that timed out, for one. An object.
  const Json& data() const { return data_; }

 private:
  std::string name_;
  Json data_;
};

struct Notification {
  std::string method;
  Json parameters;  // an object
};

class SessionClient {
 public:
  using milliseconds = std::chrono::milliseconds;
  static constexpr milliseconds kUsualTimeout{30'000};
  // Of a line, and of the notifications that wait: what an agent keeps of answers that nobody
  // reads.
  static constexpr std::size_t kMostKept = std::size_t{256} * 1024 * 1024;

  // `address` is the path of a socket or "tcp:127.0.0.1:PORT", a port of this machine. Throws
  // WireError when nobody answers there within the time-out, std::invalid_argument when it is
  // neither.
  SessionClient(const std::string& address, milliseconds connectTimeout);

  // Asks and returns the result, an object. The program gives up after `timeout` (unless
  // `parameters` say otherwise) with the RequestError "timeout", which says what kept it; for
  // `wait.for` and `wait.rest` it is how long to wait. Throws RequestError; WireError when the
  // connection ends or brings what no agent sends, or when the program says nothing at all;
  // std::invalid_argument when a parameter is not UTF-8. After a WireError the connection is of no
  // use any more.
  Json call(const std::string& method, Json parameters = Json::object(),
            milliseconds timeout = kUsualTimeout);

  // Whether a condition of `wait.for` comes true within the time-out. Throws as `call` does, but
  // for "timeout".
  bool comesTrue(const Json& condition, milliseconds timeout);

  // Is told the method of a request, one but a wait, that is not answered for so long that a person
  // asks why.
  void onSilence(std::function<void(const std::string& method)> tell) {
    onSilence_ = std::move(tell);
  }

  // On any thread: what goes on ends with a WireError, and so does all that is asked afterwards.
  void hangUp() { socket_.shutDown(); }

  // The next notification, also one that came before an answer. Null when the time-out passes or
  // one of `wakeOn` becomes readable before. Throws WireError.
  std::optional<Notification> next(milliseconds timeout, std::span<const int> wakeOn = {});

 private:
  std::optional<std::string> nextLine(Deadline deadline, std::span<const int> wakeOn = {});
  std::optional<std::string> takeLine();
  // The answer to that request, when the line is one; keeps notifications, drops answers that come
  // too late.
  std::optional<Json> takeMessage(const std::string& line, std::uint64_t id);
  void keep(Json& message, std::size_t bytes);

  struct Kept {
    Notification notification;
    std::size_t bytes;
  };

  void awaitFirstData(const std::string& method, Deadline deadline);

  Socket socket_;
  std::function<void(const std::string& method)> onSilence_;
  std::string input_;
  std::size_t taken_ = 0;     // of the input: lines that were read
  std::size_t searched_ = 0;  // of the input: it holds no end of a line from `taken_` to here
  std::deque<Kept> notifications_;
  std::size_t keptBytes_ = 0;
  std::uint64_t lastId_ = 0;
};

}  // namespace tarni::host
