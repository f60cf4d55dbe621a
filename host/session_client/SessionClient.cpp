#include "host/session_client/SessionClient.h"

#include <string_view>
#include <utility>

#include "host/guard/Text.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

using std::chrono::milliseconds;

// How much longer than the program is waited for before it counts as stopped.
constexpr milliseconds kGrace{2'000};
// That a person waits before asking what for.
constexpr milliseconds kUntilAsked{2'000};

// The program hangs up on a longer line.
constexpr std::size_t kLongestRequest = std::size_t{16} * 1024 * 1024;

constexpr std::string_view kPort = "tcp:";

std::uint16_t portOf(const std::string& address) {
  const std::string_view text(address);
  const auto colon = text.rfind(':');
  const auto host = text.substr(kPort.size(), colon > kPort.size() ? colon - kPort.size() : 0);
  const auto port = wholeNumberIn<std::uint16_t>(text.substr(colon + 1)).value_or(0);
  const bool isHere = host == "127.0.0.1" || host == "localhost";
  if (!isHere || port == 0) {
    throw std::invalid_argument(address +
                                " is no session channel: it is a path or "
                                "tcp:127.0.0.1:PORT");
  }
  return port;
}

Socket connectTo(const std::string& address, milliseconds timeout) {
  const auto deadline = Clock::now() + timeout;
  return address.starts_with(kPort) ? Socket::connectToThisMachine(portOf(address), deadline)
                                    : Socket::connectToPath(address, deadline);
}

std::string requestLine(std::uint64_t id, const std::string& method, const Json& parameters) {
  const Json request = {{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", parameters}};
  std::string line;
  try {
    line = request.dump() + "\n";
  } catch (const Json::type_error&) {
    throw std::invalid_argument("a value is not UTF-8");
  }
  if (line.size() > kLongestRequest) throw std::invalid_argument("more than 16 MB in one request");
  return line;
}

[[noreturn]] void refuse(const std::string& what) {
  throw WireError("the program sent what is no answer of a session channel: " + what);
}

Json messageIn(const std::string& line) {
  try {
    Json message = readJson(line);
    if (!message.is_object()) refuse("a line that is no JSON object");
    return message;
  } catch (const JsonTooLarge& error) {
    refuse(error.what());
  }
}

[[noreturn]] void fail(const Json& error) {
  const Json& data = objectIn(error, "data");
  const auto name = textIn(data, "error");
  throw RequestError(name.empty() ? "unknown error" : name, textIn(error, "message"), data);
}

}  // namespace

RequestError::RequestError(std::string name, const std::string& sentence, Json data)
    : std::runtime_error(sentence), name_(std::move(name)), data_(std::move(data)) {}

SessionClient::SessionClient(const std::string& address, milliseconds connectTimeout)
    : socket_(connectTo(address, connectTimeout)) {}

Json SessionClient::call(const std::string& method, Json parameters, milliseconds timeout) {
  if (!parameters.contains("timeout")) parameters["timeout"] = timeout.count();
  const auto deadline = Clock::now() + timeout + kGrace;
  const auto id = ++lastId_;
  socket_.write(requestLine(id, method, parameters), deadline);
  awaitFirstData(method, deadline);
  while (const auto line = nextLine(deadline)) {
    if (auto result = takeMessage(*line, id)) return *std::move(result);
  }
  throw WireError("the program did not answer " + method + " in time: is it stopped?");
}

bool SessionClient::comesTrue(const Json& condition, milliseconds timeout) {
  try {
    call("wait.for", {{"conditions", Json::array({condition})}}, timeout);
    return true;
  } catch (const RequestError& error) {
    if (error.name() != "timeout") throw;
    return false;
  }
}

void SessionClient::awaitFirstData(const std::string& method, Deadline deadline) {
  if (!onSilence_ || method.starts_with("wait.")) return;
  const auto soon = Clock::now() + kUntilAsked;
  const bool isSilent = socket_.waitForData(std::min(soon, deadline), {}) != Socket::Ready::Data;
  if (isSilent && soon < deadline) onSilence_(method);
}

std::optional<Notification> SessionClient::next(milliseconds timeout, std::span<const int> wakeOn) {
  const auto deadline = Clock::now() + timeout;
  while (notifications_.empty()) {
    const auto line = nextLine(deadline, wakeOn);
    if (!line) return std::nullopt;
    takeMessage(*line, 0);
  }
  auto first = std::move(notifications_.front());
  notifications_.pop_front();
  keptBytes_ -= first.bytes;
  return std::move(first.notification);
}

std::optional<std::string> SessionClient::nextLine(Deadline deadline, std::span<const int> wakeOn) {
  while (true) {
    if (auto line = takeLine()) return line;
    if (input_.size() > kMostKept) refuse("a line that does not end");
    if (socket_.waitForData(deadline, wakeOn) != Socket::Ready::Data) return std::nullopt;
    const auto bytes = socket_.read();
    if (bytes.empty()) {
      throw WireError(input_.empty() ? "the program closed the session channel"
                                     : "the program closed the session channel within a line");
    }
    input_ += bytes;
    // One that never stops sending would keep the wait above from ending.
    if (Clock::now() >= deadline) return takeLine();
  }
}

std::optional<std::string> SessionClient::takeLine() {
  const auto end = input_.find('\n', searched_);
  if (end == std::string::npos) {
    input_.erase(0, std::exchange(taken_, 0));
    searched_ = input_.size();
    return std::nullopt;
  }
  auto line = input_.substr(taken_, end - taken_);
  taken_ = searched_ = end + 1;
  return line;
}

std::optional<Json> SessionClient::takeMessage(const std::string& line, std::uint64_t id) {
  Json message = messageIn(line);
  if (message.contains("method")) {
    keep(message, line.size());
    return std::nullopt;
  }
  if (!message.contains("id")) refuse("a message without \"id\"");
  const bool hasFailed = message.contains("error");
  const bool isOfNobody =
      hasFailed && message["id"].is_null();  // a request that was not understood
  if (message["id"] != id && !isOfNobody) return std::nullopt;
  if (hasFailed) fail(message["error"]);
  const auto result = message.find("result");
  if (result == message.end() || !result->is_object()) refuse("an answer without a result");
  return std::move(*result);
}

void SessionClient::keep(Json& message, std::size_t bytes) {
  if (message.contains("id")) refuse("a request");
  keptBytes_ += bytes;
  if (keptBytes_ > kMostKept) refuse("more notifications than anybody reads");
  notifications_.push_back({{textIn(message, "method"), objectIn(message, "params")}, bytes});
}

}  // namespace tarni::host
