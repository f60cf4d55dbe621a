// Client: one connection of the session channel: lines in, lines out, and the requests in between.
//
// Everything runs on the connection's own serial queue, in short turns: whatever the client sends
// or reads, what else waits for the queue has its turn soon, and the thread that tells of arrivals
// is given little to do. Nothing of a client's is without bound: the length of a line, the requests
// on their way (what comes then stays in the socket until some are answered), the answers that wait
// to be read.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"
#include "agent/session/calls/Call.h"
#include "platform/Dispatch/Dispatch.h"

namespace tarni::session {

class HeldInput;

class Client : public std::enable_shared_from_this<Client> {
 public:
  static constexpr std::size_t kLongestLine = 16UL * 1024 * 1024;
  static constexpr std::size_t kMostRequests = 256;
  static constexpr std::size_t kMostUnread = 256UL * 1024 * 1024;
  static constexpr double kLongestStall = 10;  // seconds in which nothing is read of what waits

  explicit Client(FileDescriptor connection);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client();

  // `onClosed` is called once.
  void start(std::function<void(const Client*)> onClosed);
  // Any thread. Lets go of `awaited` once what was sent before has gone out, as far as the client
  // reads it.
  void flush(std::shared_ptr<void> awaited);

 private:
  struct Request {
    CallRef call;
    std::unique_ptr<platform::DispatchTimer> timer;
  };

  template <typename Handler>
  platform::Block whileAlive(Handler handler);
  bool takesRequests() const;
  void readOn();
  void readLater();
  void receive();
  void awaitInput();
  void takeLines();
  void takeLine(std::string_view line);
  void request(const Json& message);
  void perform(const Json& id, const struct Method& method, Json parameters);
  void cancel(const Json& id, const Json& parameters);
  void armTimer(Request& request, const std::string& key);
  void didEnd(const std::string& key, const Json& id, const std::string& answer);
  void send(const std::string& line);
  void writeOn();
  bool writePiece();
  void awaitWritable();
  void armStall();
  void closeUnread();
  void close();

  FileDescriptor connection_;
  const std::shared_ptr<platform::DispatchQueue> queue_;
  std::unique_ptr<platform::DispatchSource> readSource_;
  std::unique_ptr<platform::DispatchSource> writeSource_;
  std::unique_ptr<platform::DispatchTimer> stall_;
  std::function<void(const Client*)> onClosed_;
  const std::shared_ptr<HeldInput> held_;
  std::shared_ptr<const Notify> notify_;
  std::map<std::string, Request> requests_;  // by the text of their ids, or numbered without one
  std::uint64_t notifications_ = 0;
  std::string input_;
  std::size_t searched_ = 0;  // of the input: it holds no end of a line before
  std::string outbox_;
  std::size_t written_ = 0;
  bool isReadAwaited_ = false;
  bool isReadPosted_ = false;
  bool isWriteAwaited_ = false;
};

}  // namespace tarni::session
