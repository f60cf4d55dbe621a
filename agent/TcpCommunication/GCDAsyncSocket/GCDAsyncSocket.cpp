#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocket.h"

#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "agent/TcpCommunication/GCDAsyncSocket/ListeningSocket.h"
#include "agent/TcpCommunication/GCDAsyncSocket/ReserveSockets.h"
#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"
#include "platform/Foundation/NSException.h"
#include "platform/Foundation/NSLog.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr double kAcceptRetryDelay = 0.5;
constexpr std::size_t kSmallestRead = 4096;
constexpr std::size_t kLargestWrite = 256UL * 1024;
// A peer that is only written to lets reads pile up; so many are kept.
constexpr std::size_t kMaximumPendingReads = 16384;

std::size_t bytesToRead(const FileDescriptor& connection) {
  int available = 0;
  ioctl(connection.get(), FIONREAD, &available);
  return std::max(kSmallestRead, static_cast<std::size_t>(std::max(available, 0)));
}

platform::Dispatch& dispatch() {
  return *platform::current().dispatch;
}

}  // namespace

GCDAsyncSocket::GCDAsyncSocket(std::weak_ptr<GCDAsyncSocketDelegate> delegate, Queue delegateQueue,
                               Queue socketQueue)
    : delegateQueue_(std::move(delegateQueue)),
      socketQueue_(socketQueue ? std::move(socketQueue)
                               : dispatch().makeSerialQueue("GCDAsyncSocket")),
      delegate_(std::move(delegate)) {
  if (socketQueue_->isConcurrent()) {
    throw platform::NSException(platform::NSInvalidArgumentException,
                                "The given socketQueue parameter must not be a concurrent queue.");
  }
}

GCDAsyncSocket::~GCDAsyncSocket() {
  socketQueue_->sync([this] { closeWithError(std::nullopt); });
}

void GCDAsyncSocket::setDelegate(std::weak_ptr<GCDAsyncSocketDelegate> delegate) {
  const std::lock_guard lock(mutex_);
  delegate_ = std::move(delegate);
}

std::weak_ptr<GCDAsyncSocketDelegate> GCDAsyncSocket::delegate() const {
  const std::lock_guard lock(mutex_);
  return delegate_;
}

const std::string& GCDAsyncSocket::CRLFData() {
  static const auto* const data = new std::string("\r\n");
  return *data;
}

SocketAddress GCDAsyncSocket::localAddress() const {
  const std::lock_guard lock(mutex_);
  return localAddress_;
}

SocketAddress GCDAsyncSocket::connectedAddress() const {
  const std::lock_guard lock(mutex_);
  return connectedAddress_;
}

template <typename Call>
void GCDAsyncSocket::tellDelegate(Call call) {
  auto self = weak_from_this().lock();
  if (!self || !delegateQueue_) return;
  delegateQueue_->async(
      [self = std::move(self), weakDelegate = delegate(), call = std::move(call)]() mutable {
        if (const auto delegate = weakDelegate.lock()) call(*delegate, self);
      });
}

template <typename Handler>
platform::Block GCDAsyncSocket::whileAlive(Handler handler) {
  return [weak = weak_from_this(), handler = std::move(handler)] {
    if (const auto self = weak.lock()) handler(*self);
  };
}

// --- listening

bool GCDAsyncSocket::acceptOnPortError(std::uint16_t port, NSError* error) {
  std::optional<NSError> failure;
  socketQueue_->sync([&] { failure = listen(port); });
  if (failure && error) *error = *failure;
  return !failure;
}

std::optional<NSError> GCDAsyncSocket::listen(std::uint16_t port) {
  if (delegate().expired()) {
    return socketError(GCDAsyncSocketErrorCode::BadConfig,
                       "Attempting to accept without a delegate. Set a delegate first.");
  }
  if (!delegateQueue_) {
    return socketError(
        GCDAsyncSocketErrorCode::BadConfig,
        "Attempting to accept without a delegate queue. Set a delegate queue first.");
  }
  if (isStarted_) {
    return socketError(
        GCDAsyncSocketErrorCode::BadConfig,
        "Attempting to accept while connected or accepting connections. Disconnect first.");
  }
  auto opened = listenOnAllAddresses(port);
  if (const auto* const error = std::get_if<NSError>(&opened)) return *error;
  auto& sockets = std::get<ListeningSockets>(opened);
  try {
    watchForClients(listener4_, std::move(sockets.socket4));
    watchForClients(listener6_, std::move(sockets.socket6));
  } catch (const std::system_error& error) {
    stopListening();
    return errnoError(error.code().value(), "Error watching the socket");
  }
  isStarted_ = true;
  const FileDescriptor& first =
      listener4_.descriptor.isOpen() ? listener4_.descriptor : listener6_.descriptor;
  const std::lock_guard lock(mutex_);
  localAddress_ = SocketAddress::localOf(first.get());
  connectedAddress_ = {};
  return std::nullopt;
}

void GCDAsyncSocket::watchForClients(Listener& listener, FileDescriptor descriptor) {
  if (!descriptor.isOpen()) return;
  listener.descriptor = std::move(descriptor);
  listener.source = dispatch().makeReadSource(
      listener.descriptor.get(), socketQueue_,
      whileAlive([&listener](GCDAsyncSocket& self) { self.acceptNext(listener); }));
  listener.source->resume();
}

void GCDAsyncSocket::acceptNext(Listener& listener) {
  FileDescriptor client = acceptClient(listener.descriptor.get());
  if (client.isOpen()) {
    handOver(std::move(client));
  } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
    return retryAcceptingLater(listener, errno);
  }
  listener.source->resume();
}

// Without descriptors or memory the client stays pending and would wake us over and over.
void GCDAsyncSocket::retryAcceptingLater(Listener& listener, int systemCode) {
  platform::NSLog("Error in accept() function: %s",
                  std::generic_category().message(systemCode).c_str());
  listener.retry = dispatch().makeTimer(
      kAcceptRetryDelay, socketQueue_,
      whileAlive([&listener](GCDAsyncSocket& self) { self.acceptNext(listener); }));
}

void GCDAsyncSocket::handOver(FileDescriptor client) {
  tellDelegate([client = std::make_shared<FileDescriptor>(std::move(client))](
                   GCDAsyncSocketDelegate& delegate, const GCDAsyncSocketRef& sock) {
    const std::string address = SocketAddress::peerOf(client->get()).host;
    Queue queue = delegate.newSocketQueueForConnectionFromAddressOnSocket(address, sock);
    const auto accepted = sock->makeAccepted(std::move(*client), std::move(queue));
    delegate.socketDidAcceptNewSocket(sock, accepted);
  });
}

GCDAsyncSocketRef GCDAsyncSocket::makeAccepted(FileDescriptor client, Queue socketQueue) {
  auto accepted =
      std::make_shared<GCDAsyncSocket>(delegate(), delegateQueue_, std::move(socketQueue));
  accepted->localAddress_ = SocketAddress::localOf(client.get());
  accepted->connectedAddress_ = SocketAddress::peerOf(client.get());
  accepted->connection_ = std::move(client);
  accepted->isStarted_ = true;
  return accepted;
}

// --- reading

void GCDAsyncSocket::readDataToDataWithTimeoutMaxLengthTag(std::string terminator, double timeout,
                                                           std::size_t maxLength, long tag) {
  GCDAsyncReadPacket packet;
  packet.terminator = std::move(terminator);
  packet.timeout = timeout;
  packet.maxLength = maxLength;
  packet.tag = tag;
  enqueue(std::move(packet));
}

void GCDAsyncSocket::readDataWithTimeoutTag(double timeout, long tag) {
  GCDAsyncReadPacket packet;
  packet.timeout = timeout;
  packet.tag = tag;
  enqueue(std::move(packet));
}

// A listening socket is never connected, so what it is asked to read or write is dropped at once.
void GCDAsyncSocket::enqueue(GCDAsyncReadPacket packet) {
  socketQueue_->async([self = shared_from_this(), packet = std::move(packet)]() mutable {
    if (!self->isConnected()) return;
    if (self->readQueue_.size() >= kMaximumPendingReads) {
      platform::NSLog("The host tool sends nothing: a read is dropped behind %zu",
                      kMaximumPendingReads);
      return;
    }
    self->readQueue_.push_back(std::move(packet));
    if (!self->currentRead_) self->serveReads();
  });
}

// One turn: what was read ahead, and once what the system holds. What arrives meanwhile has its
// turn after others had theirs.
void GCDAsyncSocket::serveReads() {
  if (serveReadsFromPreBuffer() && receiveNow() && serveReadsFromPreBuffer()) awaitReadable();
}

// True when a read needs more than that.
bool GCDAsyncSocket::serveReadsFromPreBuffer() {
  while (currentRead_ || beginRead()) {
    if (currentRead_->readFrom(preBuffer_) != GCDAsyncReadPacket::Progress::Complete) return true;
    completeRead();
  }
  return false;
}

bool GCDAsyncSocket::beginRead() {
  if (readQueue_.empty()) return false;
  currentRead_ = std::move(readQueue_.front());
  readQueue_.pop_front();
  ++currentReadNumber_;
  if (currentRead_->timeout >= 0) armReadTimer(currentRead_->timeout);
  // What was read ahead is not all that is available. A failure shows with the next read again.
  if (currentRead_->takesWhatIsAvailable() && preBuffer_.availableBytes() > 0) receive();
  return true;
}

// False when the connection is at its end.
bool GCDAsyncSocket::receiveNow() {
  const ssize_t length = receive();
  if (length > 0 || (length < 0 && (errno == EAGAIN || errno == EINTR))) return true;
  closeWithError(length == 0 ? socketError(GCDAsyncSocketErrorCode::Closed)
                             : errnoError(errno, "Error in read() function"));
  return false;
}

// Moves what the system holds into the pre-buffer; answers like recv().
ssize_t GCDAsyncSocket::receive() {
  preBuffer_.ensureCapacityForWrite(bytesToRead(connection_));
  const std::span<char> room = preBuffer_.writeBuffer();
  const ssize_t length = recv(connection_.get(), room.data(), room.size(), 0);
  if (length > 0) preBuffer_.didWrite(static_cast<std::size_t>(length));
  return length;
}

void GCDAsyncSocket::completeRead() {
  readTimer_.reset();
  if (currentRead_->isTooLong) {
    platform::NSLog("A line of more than %zu bytes is dropped", currentRead_->maxLength);
  }
  tellDelegate([data = std::move(currentRead_->buffer), tag = currentRead_->tag](
                   GCDAsyncSocketDelegate& delegate, const GCDAsyncSocketRef& self) mutable {
    delegate.socketDidReadDataWithTag(self, data, tag);
  });
  currentRead_.reset();
}

void GCDAsyncSocket::awaitReadable() {
  if (isReadAwaited_) return;
  try {
    if (!readSource_) {
      readSource_ = dispatch().makeReadSource(connection_.get(), socketQueue_,
                                              whileAlive([](GCDAsyncSocket& self) {
                                                self.isReadAwaited_ = false;
                                                self.serveReads();
                                              }));
    }
    readSource_->resume();
    isReadAwaited_ = true;
  } catch (const std::system_error& error) {
    closeWithError(errnoError(error.code().value(), "Error watching the socket"));
  }
}

void GCDAsyncSocket::armReadTimer(double seconds) {
  readTimer_ = dispatch().makeTimer(
      seconds, socketQueue_, whileAlive([](GCDAsyncSocket& self) { self.askForExtension(); }));
}

void GCDAsyncSocket::askForExtension() {
  if (!currentRead_) return;
  if (delegate().expired()) return extendRead(currentReadNumber_, 0);
  tellDelegate([number = currentReadNumber_, tag = currentRead_->tag,
                elapsed = currentRead_->timeout, bytesDone = currentRead_->buffer.size()](
                   GCDAsyncSocketDelegate& delegate, const GCDAsyncSocketRef& self) {
    const double extension =
        delegate.socketShouldTimeoutReadWithTagElapsedBytesDone(self, tag, elapsed, bytesDone);
    self->socketQueue_->async([self, number, extension] { self->extendRead(number, extension); });
  });
}

void GCDAsyncSocket::extendRead(std::uint64_t number, double seconds) {
  if (!currentRead_ || number != currentReadNumber_) return;
  if (seconds > 0) {
    currentRead_->timeout += seconds;
    armReadTimer(seconds);
  } else {
    closeWithError(socketError(GCDAsyncSocketErrorCode::ReadTimeout));
  }
}

// --- writing

void GCDAsyncSocket::writeDataWithTimeoutTag(std::string data, double timeout, long tag) {
  if (data.empty()) return;
  auto packet =
      std::make_shared<GCDAsyncWritePacket>(std::move(data), timeout, tag, pendingWrites_);
  socketQueue_->async([self = shared_from_this(), packet = std::move(packet)] {
    if (!self->isConnected()) return;
    self->writeQueue_.push_back(packet);
    if (!self->currentWrite_) self->serveWrites();
  });
}

// One turn: a piece of what is to be written.
void GCDAsyncSocket::serveWrites() {
  if (!isConnected() || (!currentWrite_ && !beginWrite()) || !writeNow()) return;
  if (currentWrite_->bytesDone == currentWrite_->data.size()) completeWrite();
  if (currentWrite_ || !writeQueue_.empty()) awaitWritable();
}

bool GCDAsyncSocket::beginWrite() {
  if (writeQueue_.empty()) return false;
  currentWrite_ = std::move(writeQueue_.front());
  writeQueue_.pop_front();
  if (currentWrite_->timeout >= 0) {
    writeTimer_ = dispatch().makeTimer(
        currentWrite_->timeout, socketQueue_, whileAlive([](GCDAsyncSocket& self) {
          if (self.currentWrite_) {
            self.closeWithError(socketError(GCDAsyncSocketErrorCode::WriteTimeout));
          }
        }));
  }
  return true;
}

// False when the connection is at its end.
bool GCDAsyncSocket::writeNow() {
  const std::string_view piece =
      std::string_view(currentWrite_->data).substr(currentWrite_->bytesDone, kLargestWrite);
  const ssize_t length = sendWithoutSignal(connection_.get(), piece);
  if (length >= 0) {
    currentWrite_->bytesDone += static_cast<std::size_t>(length);
  } else if (errno != EAGAIN && errno != EINTR) {
    closeWithError(errnoError(errno, "Error in write() function"));
    return false;
  }
  return true;
}

void GCDAsyncSocket::completeWrite() {
  writeTimer_.reset();
  tellDelegate(
      [tag = currentWrite_->tag](GCDAsyncSocketDelegate& delegate, const GCDAsyncSocketRef& self) {
        delegate.socketDidWriteDataWithTag(self, tag);
      });
  currentWrite_.reset();
}

void GCDAsyncSocket::awaitWritable() {
  if (isWriteAwaited_) return;
  try {
    if (!writeSource_) {
      writeSource_ = dispatch().makeWriteSource(connection_.get(), socketQueue_,
                                                whileAlive([](GCDAsyncSocket& self) {
                                                  self.isWriteAwaited_ = false;
                                                  self.serveWrites();
                                                }));
    }
    writeSource_->resume();
    isWriteAwaited_ = true;
  } catch (const std::system_error& error) {
    closeWithError(errnoError(error.code().value(), "Error watching the socket"));
  }
}

// --- closing

void GCDAsyncSocket::disconnect() {
  socketQueue_->sync([this] { closeWithError(std::nullopt); });
}

void GCDAsyncSocket::closeWithError(const std::optional<NSError>& error) {
  readTimer_.reset();
  writeTimer_.reset();
  readSource_.reset();
  writeSource_.reset();
  isReadAwaited_ = isWriteAwaited_ = false;
  stopListening();
  connection_ = FileDescriptor();
  ReserveSockets::shared().fill();  // descriptors have just become free
  readQueue_.clear();
  writeQueue_.clear();
  currentRead_.reset();
  currentWrite_.reset();
  preBuffer_ = GCDAsyncSocketPreBuffer();
  if (!std::exchange(isStarted_, false)) return;
  tellDelegate([error](GCDAsyncSocketDelegate& delegate, const GCDAsyncSocketRef& self) {
    delegate.socketDidDisconnectWithError(self, error);
  });
}

void GCDAsyncSocket::stopListening() {
  for (Listener* const listener : {&listener4_, &listener6_}) {
    listener->retry.reset();
    listener->source.reset();
    listener->descriptor = FileDescriptor();
  }
}

}  // namespace tarni
