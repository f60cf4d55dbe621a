#include "agent/session/Client.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"
#include "agent/session/input/HeldInput.h"
#include "agent/session/protocol/JsonRpc.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"
#include "platform/Platform.h"

namespace tarni::session {
namespace {

constexpr std::size_t kReadSize = 64UL * 1024;
constexpr std::size_t kWriteSize = 256UL * 1024;
// Input that may be read where its arrival is told; more of it is read on a thread that others do
// not wait for.
constexpr std::size_t kShortInput = 4096;
// With so much unread by the client no further request begins. Much, because one that sends all its
// requests before it reads an answer waits in its own sending from then on.
constexpr std::size_t kEnoughUnread = 16UL * 1024 * 1024;
// A wait that is over says itself what it waited for, unless the main thread keeps it from that.
constexpr double kGraceMilliseconds = 250;

SessionError timeoutError(const Call& call) {
  const auto busy =
      std::chrono::duration_cast<std::chrono::milliseconds>(MainWatch::sharedInstance().busyFor())
          .count();
  const std::string method(call.method().name);
  if (busy > 0) {
    const std::string work = platform::current().application->currentWork();
    return {errors::kTimeout,
            method + ": the program's main thread has been busy for " + std::to_string(busy) +
                " ms without a break" + (work.empty() ? "" : ", since " + work),
            {{"busyMs", busy}, {"beganWith", work}}};
  }
  return {errors::kTimeout, method + ": another command has the program's main thread"};
}

}  // namespace

Client::Client(FileDescriptor connection)
    : connection_(std::move(connection)),
      queue_(platform::current().dispatch->makeSerialQueue("session client")),
      held_(std::make_shared<HeldInput>()) {}

Client::~Client() = default;

template <typename Handler>
platform::Block Client::whileAlive(Handler handler) {
  return [weak = weak_from_this(), handler = std::move(handler)] {
    if (const auto self = weak.lock()) handler(*self);
  };
}

void Client::start(std::function<void(const Client*)> onClosed) {
  queue_->async([self = shared_from_this(), onClosed = std::move(onClosed)] {
    self->onClosed_ = onClosed;
    self->notify_ = std::make_shared<const Notify>(
        [weak = self->weak_from_this(), queue = self->queue_](const std::string& line) {
          queue->async([weak, line] {
            if (const auto client = weak.lock()) client->send(line);
          });
        });
    self->readOn();
  });
}

void Client::flush(std::shared_ptr<void> awaited) {
  queue_->async([self = shared_from_this(), awaited = std::move(awaited)] {
    while (self->writePiece()) {
    }
  });
}

// --- in

bool Client::takesRequests() const {
  return requests_.size() < kMostRequests && outbox_.size() - written_ < kEnoughUnread;
}

// One turn: the lines that wait, then what has arrived since.
void Client::readOn() {
  takeLines();
  if (connection_.isOpen() && takesRequests() && !isReadAwaited_) receive();
}

void Client::readLater() {
  if (std::exchange(isReadPosted_, true)) return;
  queue_->async(whileAlive([](Client& self) {
    self.isReadPosted_ = false;
    self.readOn();
  }));
}

void Client::receive() {
  std::array<char, kReadSize> bytes;
  const ssize_t length = recv(connection_.get(), bytes.data(), bytes.size(), 0);
  if (length == 0 || (length < 0 && errno != EAGAIN && errno != EINTR)) return close();
  if (length > 0) input_.append(bytes.data(), static_cast<std::size_t>(length));
  if (length > 0 && input_.size() > kShortInput) return readLater();
  takeLines();
  if (connection_.isOpen() && takesRequests()) awaitInput();
}

void Client::awaitInput() {
  if (!readSource_) {
    readSource_ = platform::current().dispatch->makeReadSource(connection_.get(), queue_,
                                                               whileAlive([](Client& self) {
                                                                 self.isReadAwaited_ = false;
                                                                 self.receive();
                                                               }));
  }
  isReadAwaited_ = true;
  readSource_->resume();
}

void Client::takeLines() {
  std::size_t begin = 0;
  while (connection_.isOpen() && takesRequests()) {
    const std::size_t end = input_.find('\n', std::max(begin, searched_));
    if (end == std::string::npos) {
      searched_ = input_.size();
      break;
    }
    takeLine(std::string_view(input_).substr(begin, end - begin));
    begin = end + 1;
    searched_ = begin;
  }
  input_.erase(0, begin);
  searched_ -= std::min(searched_, begin);
  if (input_.size() - searched_ > 0 || input_.size() <= kLongestLine) return;
  send(errorAnswer(nullptr, {errors::kParseError, "the line is longer than 16 MiB"}));
  close();
}

void Client::takeLine(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.empty()) return;
  try {
    request(parseRequest(line));
  } catch (const SessionError& error) {
    send(errorAnswer(nullptr, error));
  }
}

void Client::request(const Json& message) {
  const Json id = message.value("id", Json(Json::value_t::discarded));
  try {
    const std::string& name = message["method"].get_ref<const std::string&>();
    const Method* const method = methodNamed(name);
    if (!method) {
      throw SessionError(errors::kUnknownMethod, "there is no method \"" + name +
                                                     "\"; app.info lists those that there are");
    }
    Json parameters = message.value("params", Json::object());
    checkParameters(*method, parameters);
    if (!method->handler) {
      cancel(id, parameters);
    } else {
      perform(id, *method, std::move(parameters));
    }
  } catch (const SessionError& error) {
    if (!id.is_discarded()) send(errorAnswer(id, error));
  }
}

void Client::perform(const Json& id, const Method& method, Json parameters) {
  const bool isNotification = id.is_discarded();
  const std::string key =
      isNotification ? "notification " + std::to_string(notifications_++) : jsonText(id);
  if (requests_.contains(key)) {
    throw SessionError(errors::kInvalidRequest, "request " + key + " is not answered yet");
  }
  Request& entry = requests_[key];
  entry.call = std::make_shared<Call>(
      method, std::move(parameters), Call::Owned{held_, notify_},
      [weak = weak_from_this(), queue = queue_, key, id](std::shared_ptr<Result> result,
                                                         const SessionError* error) {
        std::string refusal = error ? errorAnswer(id, *error) : "";
        const bool isShort = !result || result->isShort();
        platform::Block end = [weak, key, id, result = std::move(result),
                               refusal = std::move(refusal)] {
          const auto self = weak.lock();
          if (self) self->didEnd(key, id, result ? resultAnswer(id, result->text()) : refusal);
        };
        isShort ? queue->runNowOrAsync(std::move(end)) : queue->async(std::move(end));
      });
  armTimer(entry, key);
  entry.call->begin();
}

void Client::armTimer(Request& request, const std::string& key) {
  const std::optional<double> timeout = request.call->timeout();
  if (!timeout) return;
  const double grace = request.call->method().effect == Effect::Waits ? kGraceMilliseconds : 0;
  request.timer = platform::current().dispatch->makeTimer(
      (*timeout + grace) / 1000, queue_, whileAlive([key](Client& self) {
        const auto entry = self.requests_.find(key);
        if (entry == self.requests_.end()) return;
        const CallRef call = entry->second.call;
        const SessionError error = timeoutError(*call);
        call->abandon(error);
        platform::current().dispatch->mainQueue().async([call, error] { call->interrupt(error); });
      }));
}

// `id` is discarded where nobody asks for an answer.
void Client::cancel(const Json& id, const Json& parameters) {
  const auto entry = requests_.find(jsonText(parameters["request"]));
  const bool isFound = entry != requests_.end();
  if (isFound) {
    const CallRef call = entry->second.call;
    const SessionError error(errors::kCancelled, "the request was cancelled");
    call->abandon(error);
    platform::current().dispatch->mainQueue().async([call, error] { call->interrupt(error); });
  }
  if (!id.is_discarded()) send(resultAnswer(id, jsonText({{"cancelled", isFound}})));
}

void Client::didEnd(const std::string& key, const Json& id, const std::string& answer) {
  const bool wasFull = !takesRequests();
  requests_.erase(key);
  if (!id.is_discarded()) send(answer);
  if (wasFull) readLater();
}

// --- out

void Client::send(const std::string& line) {
  if (!connection_.isOpen()) return;
  outbox_.append(line).append("\n");
  writeOn();
}

// Each piece is written in a turn of its own.
void Client::writeOn() {
  if (!isWriteAwaited_) writePiece();
  if (!connection_.isOpen() || outbox_.empty()) return;
  if (outbox_.size() - written_ > kMostUnread) return closeUnread();
  if (!isWriteAwaited_) awaitWritable();
}

// False when there is none, or it cannot be written now.
bool Client::writePiece() {
  if (!connection_.isOpen() || outbox_.empty()) return false;
  const ssize_t length =
      sendWithoutSignal(connection_.get(), std::string_view(outbox_).substr(written_, kWriteSize));
  if (length < 0) {
    errno == EAGAIN || errno == EINTR ? armStall() : close();
    return false;
  }
  stall_.reset();
  written_ += static_cast<std::size_t>(length);
  if (written_ < outbox_.size()) return true;
  outbox_.clear();
  written_ = 0;
  return false;
}

void Client::awaitWritable() {
  if (!writeSource_) {
    writeSource_ = platform::current().dispatch->makeWriteSource(
        connection_.get(), queue_, whileAlive([](Client& self) {
          self.isWriteAwaited_ = false;
          const bool wasFull = !self.takesRequests();
          self.writeOn();
          if (wasFull) self.readLater();
        }));
  }
  isWriteAwaited_ = true;
  writeSource_->resume();
}

void Client::armStall() {
  if (stall_) return;
  stall_ = platform::current().dispatch->makeTimer(
      kLongestStall, queue_, whileAlive([](Client& self) { self.closeUnread(); }));
}

void Client::closeUnread() {
  platform::NSLog("A client of the session channel reads nothing and is closed");
  close();
}

// --- the end

void Client::close() {
  if (!connection_.isOpen()) return;
  readSource_.reset();
  writeSource_.reset();
  connection_ = FileDescriptor();
  notify_.reset();
  outbox_ = {};
  written_ = 0;
  const SessionError gone(errors::kCancelled, "the client has gone");
  auto& main = platform::current().dispatch->mainQueue();
  for (auto& [key, request] : std::exchange(requests_, {})) {
    request.call->abandon(gone);
    main.async([call = request.call, gone] { call->interrupt(gone); });
  }
  main.asyncTask([held = held_] { return held->releaseAll(); });
  if (onClosed_) std::exchange(onClosed_, nullptr)(this);
}

}  // namespace tarni::session
