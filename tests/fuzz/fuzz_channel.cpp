// Requests of the session channel, one a line, by a client of its own for each input, on a screen
// with a view of every kind. What is sent back is JSON-RPC, and another client is answered all the
// time.
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "agent/session/Client.h"
#include "agent/session/calls/Costs.h"
#include "agent/session/calls/Waits.h"
#include "agent/session/protocol/SessionError.h"
#include "tests/fuzz/FuzzScreen.h"
#include "tests/fuzz/JsonMutator.h"

namespace tarni::test {
namespace {

using session::Json;

void require(bool holds, const std::string& what) {
  if (!holds) throw std::logic_error(what);
}

class Connection {
 public:
  Connection() {
    std::array<int, 2> ends{};
    require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()) == 0,
            "no socket");
    end_ = ends[0];
    client_ = std::make_shared<session::Client>(FileDescriptor(ends[1]));
    client_->start([this](const session::Client*) { client_.reset(); });
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { close(end_); }

  void send(const std::string& bytes) const {
    require(write(end_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "not sent");
  }
  // What has come since the last look, a line each.
  std::vector<Json> received() {
    std::array<char, 64UL * 1024> bytes;
    for (ssize_t length = 0; (length = read(end_, bytes.data(), bytes.size())) > 0;) {
      input_.append(bytes.data(), static_cast<std::size_t>(length));
    }
    std::vector<Json> messages;
    for (std::size_t end = 0; (end = input_.find('\n')) != std::string::npos;
         input_.erase(0, end + 1)) {
      messages.push_back(Json::parse(input_.substr(0, end), nullptr, false));
    }
    return messages;
  }

 private:
  int end_ = -1;
  std::shared_ptr<session::Client> client_;
  std::string input_;
};

bool isKnown(const Json& error) {
  return std::ranges::any_of(session::errors::kAll, [&](const session::ErrorKind& kind) {
    return error["code"] == kind.code && error["data"]["error"] == kind.name;
  });
}

void check(const Json& message) {
  require(message.is_object() && message.value("jsonrpc", "") == "2.0",
          "no JSON-RPC: " + message.dump());
  if (message.contains("error"))
    require(isKnown(message["error"]), "unknown error: " + message.dump());
  require(message.contains("error") || message.contains("result") || message.contains("method"),
          "neither answer nor notification: " + message.dump());
}

Json sample(const session::Parameter& parameter) {
  switch (parameter.kind) {
    case session::Kind::Integer:
      return parameter.name == "limit" ? 2 : 5;
    case session::Kind::Number:
      return 20;
    case session::Kind::Flag:
      return true;
    case session::Kind::Object:
      return {{"element", 5}};
    case session::Kind::List:
      if (parameter.name == "conditions")
        return {{{"find", {{"text", "Log in"}}}, {"is", "visible"}}};
      return {{{"move", {{"element", 5}, {"x", 3}, {"y", 3}}}},
              {{"down", "left"}},
              {{"up", "left"}},
              "Control+a"};
    default:
      return "Log in";
  }
}

}  // namespace
}  // namespace tarni::test

// A request of each method, with everything that it takes and with what it needs.
extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  for (const bool isWhole : {true, false}) {
    for (const auto& method : tarni::session::methods()) {
      tarni::session::Json request = {{"jsonrpc", "2.0"}, {"id", 1}, {"method", method.name}};
      for (const auto& parameter : method.parameters) {
        if (!isWhole && !parameter.isRequired) continue;
        request["params"][std::string(parameter.name)] = tarni::test::sample(parameter);
      }
      tarni::test::teach(std::move(request));
    }
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarni::test;  // NOLINT(google-build-using-namespace): one file, one subject
  static auto& screen = *[] {
    auto* const made = new FuzzScreen;
    tarni::session::MainWatch::sharedInstance().start();
    tarni::session::Waits::sharedInstance().start();
    return made;
  }();
  static auto& witness = *new Connection;
  {
    Connection connection;
    connection.send(std::string(reinterpret_cast<const char*>(data), size) + "\n");
    screen.settle();
    for (const auto& message : connection.received()) check(message);
    witness.send("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"app.costs\"}\n");
    screen.settle();
    require(witness.received().size() == 1, "the other client is not answered");
  }
  screen.settle();
  return 0;
}
