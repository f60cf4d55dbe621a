// GCDAsyncSocket: an asynchronous TCP socket. One object listens on a port (both families), or is
// one accepted connection with a queue of pending reads and a queue of pending writes.
//
// Any thread. All input and output runs on the socket queue, a private serial one unless another is
// given; the delegate, which is held weakly, is called on the delegate queue. Reads and writes are
// served in order. A negative time-out is none.
//
// Nothing but its owner keeps the object: with the last reference it closes, and a listening socket
// stops listening. One that has closed holds no buffers, for owners may keep it for ever. Objects
// are made with std::make_shared.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncReadPacket.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketDelegate.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketError.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketPreBuffer.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncWritePacket.h"
#include "agent/TcpCommunication/GCDAsyncSocket/SocketAddress.h"
#include "platform/Dispatch/Dispatch.h"

namespace tarni {

class GCDAsyncSocket : public std::enable_shared_from_this<GCDAsyncSocket> {
 public:
  using Queue = std::shared_ptr<platform::DispatchQueue>;

  // Throws NSException (invalid argument) for a concurrent socket queue.
  GCDAsyncSocket(std::weak_ptr<GCDAsyncSocketDelegate> delegate, Queue delegateQueue,
                 Queue socketQueue = nullptr);
  ~GCDAsyncSocket();
  GCDAsyncSocket(const GCDAsyncSocket&) = delete;
  GCDAsyncSocket& operator=(const GCDAsyncSocket&) = delete;

  void setDelegate(std::weak_ptr<GCDAsyncSocketDelegate> delegate);

  // Listens on every local address; port 0 chooses a free one. False with the reason in `error`
  // (may be null). A socket that was closed may listen again.
  bool acceptOnPortError(std::uint16_t port, NSError* error);
  // Closes at once, before it returns; pending reads and writes are dropped.
  void disconnect();

  // Completes with everything up to and including `terminator`; when that is more than `maxLength`
  // bytes (0 is no bound), with the terminator alone.
  void readDataToDataWithTimeoutMaxLengthTag(std::string terminator, double timeout,
                                             std::size_t maxLength, long tag);
  void readDataToDataWithTimeoutTag(std::string terminator, double timeout, long tag) {
    readDataToDataWithTimeoutMaxLengthTag(std::move(terminator), timeout, 0, tag);
  }
  // Completes with whatever is available, at least one byte.
  void readDataWithTimeoutTag(double timeout, long tag);
  // Writes the whole data; empty data is ignored.
  void writeDataWithTimeoutTag(std::string data, double timeout, long tag);

  const PendingWrites& pendingWrites() const { return *pendingWrites_; }

  // The addresses that the socket has, or had before it closed; see SocketAddress.
  std::string localHost() const { return localAddress().host; }
  std::uint16_t localPort() const { return localAddress().port; }
  std::string connectedHost() const { return connectedAddress().host; }
  std::uint16_t connectedPort() const { return connectedAddress().port; }

  static const std::string& CRLFData();

 private:
  using Source = std::unique_ptr<platform::DispatchSource>;
  using Timer = std::unique_ptr<platform::DispatchTimer>;

  // One descriptor that waits for clients.
  struct Listener {
    FileDescriptor descriptor;
    Source source;
    Timer retry;
  };

  std::weak_ptr<GCDAsyncSocketDelegate> delegate() const;
  SocketAddress localAddress() const;
  SocketAddress connectedAddress() const;

  // --- on the socket queue
  bool isConnected() const { return connection_.isOpen(); }

  std::optional<NSError> listen(std::uint16_t port);
  void watchForClients(Listener& listener, FileDescriptor descriptor);
  void acceptNext(Listener& listener);
  void retryAcceptingLater(Listener& listener, int systemCode);
  void handOver(FileDescriptor client);

  void serveReads();
  bool beginRead();
  bool serveReadsFromPreBuffer();
  bool receiveNow();
  ssize_t receive();
  void completeRead();
  void awaitReadable();
  void armReadTimer(double seconds);
  void askForExtension();
  void extendRead(std::uint64_t number, double seconds);

  void serveWrites();
  bool beginWrite();
  bool writeNow();
  void completeWrite();
  void awaitWritable();

  void stopListening();
  void closeWithError(const std::optional<NSError>& error);

  // --- any thread
  void enqueue(GCDAsyncReadPacket packet);
  GCDAsyncSocketRef makeAccepted(FileDescriptor client, Queue socketQueue);
  // Calls `call(delegate, self)` on the delegate queue.
  template <typename Call>
  void tellDelegate(Call call);
  // A handler that does nothing once the socket has gone.
  template <typename Handler>
  platform::Block whileAlive(Handler handler);

  const Queue delegateQueue_;
  const Queue socketQueue_;
  const std::shared_ptr<PendingWrites> pendingWrites_ = std::make_shared<PendingWrites>();

  mutable std::mutex mutex_;  // guards the next three
  std::weak_ptr<GCDAsyncSocketDelegate> delegate_;
  SocketAddress localAddress_;
  SocketAddress connectedAddress_;

  // --- of the socket queue
  Listener listener4_;
  Listener listener6_;
  FileDescriptor connection_;
  bool isStarted_ = false;  // listening or connected

  GCDAsyncSocketPreBuffer preBuffer_;
  std::list<GCDAsyncReadPacket> readQueue_;
  std::optional<GCDAsyncReadPacket> currentRead_;
  std::uint64_t currentReadNumber_ = 0;
  Source readSource_;
  bool isReadAwaited_ = false;
  Timer readTimer_;

  std::list<std::shared_ptr<GCDAsyncWritePacket>> writeQueue_;
  std::shared_ptr<GCDAsyncWritePacket> currentWrite_;
  Source writeSource_;
  bool isWriteAwaited_ = false;
  Timer writeTimer_;
};

}  // namespace tarni
