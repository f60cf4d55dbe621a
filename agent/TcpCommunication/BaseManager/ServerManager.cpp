#include "agent/TcpCommunication/BaseManager/ServerManager.h"

#include <utility>

#include "agent/TcpCommunication/BaseManager/Framing.h"
#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"
#include "agent/TcpCommunication/PlaybackExecutor.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr double kNoTimeout = -1;
constexpr long kFramedMessageTag = 12;
constexpr long kKeepAliveTag = 2;
constexpr long kReadTag = 0;
constexpr double kLongestReadWait = 15.0;
constexpr double kReadExtension = 10.0;
constexpr double kPauseBeforeListening = 1.0;

// A host tool that sends no end of a command does not fill the application's memory: what is longer
// is not a command.
constexpr std::size_t kLongestCommand = 16UL * 1024 * 1024;
// Nor does one that does not read its steps.
constexpr std::size_t kMostPendingSteps = 256;
constexpr std::size_t kMostPendingBytes = 64UL * 1024 * 1024;

platform::MainQueue& mainQueue() {
  return platform::current().dispatch->mainQueue();
}

platform::Task<void> greetOnMain(std::shared_ptr<ServerManager> manager, GCDAsyncSocketRef sock) {
  platform::NSLog("Accepted client %s:%hu", sock->connectedHost().c_str(), sock->localPort());
  manager->socketDidConnectToHostPort(sock, sock->connectedHost(), sock->localPort());
  co_return;
}

// Holds the main queue, but not the application, for a while.
platform::Task<void> pauseOnMain() {
  std::string mode = platform::kCFRunLoopDefaultMode;
  try {
    co_await platform::current().application->runLoopRunInMode(std::move(mode),
                                                               kPauseBeforeListening, false);
  } catch (...) {
    platform::logFailure("The pause ended early");
  }
}

}  // namespace

void ServerManager::SocketArray::add(const GCDAsyncSocketRef& sock) {
  const std::lock_guard lock(monitor);
  sockets.push_back(sock);
}

void ServerManager::SocketArray::remove(const GCDAsyncSocketRef& sock) {
  const std::lock_guard lock(monitor);
  std::erase(sockets, sock);
}

ServerManager& ServerManager::serverManager() {
  static auto* const shared = new std::shared_ptr<ServerManager>(make());
  return **shared;
}

std::shared_ptr<ServerManager> ServerManager::make() {
  std::shared_ptr<ServerManager> manager(new ServerManager);
  manager->recorderServerSocket_ =
      std::make_shared<GCDAsyncSocket>(manager, manager->socketRecorderServerQueue_);
  manager->playBackServerSocket_ =
      std::make_shared<GCDAsyncSocket>(manager, manager->socketPlaybackServerQueue_);
  return manager;
}

ServerManager::ServerManager()
    : socketRecorderServerQueue_(
          platform::current().dispatch->makeSerialQueue("RecorderSocketQueue")),
      socketPlaybackServerQueue_(
          platform::current().dispatch->makeSerialQueue("PlayBackSocketQueue")) {}

ServerManager::~ServerManager() {
  recorderServerSocket_->setDelegate({});
  playBackServerSocket_->setDelegate({});
}

// --- opening and sending

void ServerManager::initialiseRecorderServerOnPortNumberWithRecorderRequest(
    std::uint16_t port, const std::string& request) {
  write(jsonRecorderServerData_, framed(request));
  platform::NSLog("Recorded Steps %s", request.c_str());
  const GCDAsyncSocketRef sock = recorderServerSocket();
  if (!isRecorderRunning()) {
    NSError error;
    if (!sock->acceptOnPortError(port, &error)) {
      platform::NSLog("Error starting server: %s", error.description().c_str());
      return;
    }
    platform::NSLog("Recorder server started on port %hu", sock->localPort());
    write(isRecorderRunning_, true);
  }
  const GCDAsyncSocketRef current = recorderServerSocket();
  socketDidConnectToHostPort(current, current->localHost(), current->localPort());
}

void ServerManager::initialisePlayBackServerOnPortNumberWithPlayBackResponse(
    std::uint16_t port, const std::string& response) {
  const std::string message = framed(response);
  write(jsonPlayBackServerData_, message);
  platform::NSLog("%s", message.c_str());
  const GCDAsyncSocketRef sock = playBackServerSocket();
  if (!isPlaybackRunning()) {
    platform::NSLog("AcceptOnPort-1");
    NSError error;
    if (!sock->acceptOnPortError(port, &error)) {
      platform::NSLog("1 Error starting server: %s", error.description().c_str());
    }
    // Kept: the log says so and the state goes with it after a failure, too. The playback server is
    // not tried again.
    platform::NSLog("Playback server started on port %hu", sock->localPort());
    write(isPlaybackRunning_, true);
  }
  socketDidConnectToHostPort(sock, sock->localHost(), sock->localPort());
}

void ServerManager::socketDidConnectToHostPort(const GCDAsyncSocketRef& sock,
                                               const std::string& /*host*/,
                                               std::uint16_t /*port*/) {
  platform::NSLog("DidConnect to host");
  // The end of the write queues a read as well, behind this one: the first read of a connection
  // takes whatever arrives.
  const std::lock_guard lock(writeThenRead_);
  if (sock == recorderServerSocket()) {
    writePendingRecorderData(sock);
  } else if (sock == playBackServerSocket()) {
    sock->writeDataWithTimeoutTag(read(jsonPlayBackServerData_), kNoTimeout, kFramedMessageTag);
  }
  // Kept: every step queues one more, on a listening socket too, where the read and the write are
  // never carried out.
  sock->readDataWithTimeoutTag(kNoTimeout, kReadTag);
}

void ServerManager::writePendingRecorderData(const GCDAsyncSocketRef& sock) {
  std::string message = read(jsonRecorderServerData_);
  const PendingWrites& pending = sock->pendingWrites();
  if (pending.messages >= kMostPendingSteps || pending.bytes >= kMostPendingBytes) {
    platform::NSLog("The host tool does not read: a message of %zu bytes is dropped behind %zu",
                    message.size(), pending.messages.load());
    return;
  }
  sock->writeDataWithTimeoutTag(std::move(message), kNoTimeout, kFramedMessageTag);
}

void ServerManager::stopRecordingWhilePlayBack() {
  recorderServerSocket()->disconnect();
}

// --- connections

void ServerManager::socketDidAcceptNewSocket(const GCDAsyncSocketRef& sock,
                                             const GCDAsyncSocketRef& newSocket) {
  platform::NSLog("Accepted new socket from %s:%hu", newSocket->localHost().c_str(),
                  newSocket->localPort());
  if (newSocket->localPort() == kRecorderPort) {
    if (!replaceListener(recorderServerSocket_, sock, newSocket)) return;
    connectedRecorderSocketArray_.add(newSocket);
  } else if (newSocket->localPort() == kPlaybackPort) {
    if (!replaceListener(playBackServerSocket_, sock, newSocket)) return;
    connectedPlayBackSocketArray_.add(newSocket);
  }
  mainQueue().asyncTask(
      [self = shared_from_this(), newSocket] { return greetOnMain(self, newSocket); });
}

// The listener closes at once and not just with its last reference, since the playback array holds
// one to a connection object that listens again. A client that was accepted before that is turned
// away: a server has one host tool at a time.
bool ServerManager::replaceListener(GCDAsyncSocketRef& current, const GCDAsyncSocketRef& listener,
                                    const GCDAsyncSocketRef& connection) {
  {
    const std::lock_guard lock(mutex_);
    if (current != listener) return false;
    current = connection;
  }
  listener->disconnect();
  return true;
}

void ServerManager::socketDidReadDataWithTag(const GCDAsyncSocketRef& sock, std::string& data,
                                             long /*tag*/) {
  if (sock->localPort() == kRecorderPort) {
    mainQueue().asyncTask(
        [message = std::move(data)] { return RecorderCommands::handle(message); });
  } else if (sock->localPort() == kPlaybackPort) {
    mainQueue().asyncTask(
        [self = shared_from_this(), sock, message = PlaybackMessage(std::move(data))] {
          return self->handlePlaybackCommandOnMain(sock, message);
        });
  }
}

platform::Task<void> ServerManager::handlePlaybackCommandOnMain(GCDAsyncSocketRef sock,
                                                                PlaybackMessage message) {
  write(IsPlaybackGetResponse_, true);
  // The other half of what ends recording is the executor's.
  stopRecordingWhilePlayBack();
  const std::optional<std::string> answer = co_await PlaybackExecutor::execute(std::move(message));
  if (answer) sock->writeDataWithTimeoutTag(framed(*answer), kNoTimeout, kFramedMessageTag);
}

void ServerManager::socketDidWriteDataWithTag(const GCDAsyncSocketRef& sock, long tag) {
  if (tag != kFramedMessageTag) return;
  const std::lock_guard lock(writeThenRead_);
  sock->readDataToDataWithTimeoutMaxLengthTag(GCDAsyncSocket::CRLFData(), kNoTimeout,
                                              kLongestCommand, kReadTag);
}

double ServerManager::socketShouldTimeoutReadWithTagElapsedBytesDone(const GCDAsyncSocketRef& sock,
                                                                     long /*tag*/, double elapsed,
                                                                     std::size_t /*bytesDone*/) {
  // Kept for reads with a time-out; the server itself makes none.
  if (elapsed > kLongestReadWait) return 0;
  sock->writeDataWithTimeoutTag("Are you still there?\r\n", kNoTimeout, kKeepAliveTag);
  return kReadExtension;
}

void ServerManager::socketDidDisconnectWithError(const GCDAsyncSocketRef& sock,
                                                 const std::optional<NSError>& /*error*/) {
  if (sock != playBackServerSocket()) return;
  mainQueue().asyncTask(
      [self = shared_from_this(), sock] { return self->acceptPlaybackAgainOnMain(sock); });
  // Kept: a playback connection leaves the recorder's array, where it never was, and stays in its
  // own, which holds the object that listens again.
  connectedRecorderSocketArray_.remove(sock);
}

platform::Task<void> ServerManager::acceptPlaybackAgainOnMain(GCDAsyncSocketRef gone) {
  platform::NSLog("Client Disconnected. Accepting port again-2");
  recorderServerSocket()->disconnect();
  gone->disconnect();
  write(isPlaybackRunning_, false);
  write(jsonPlayBackServerData_, "");
  co_await pauseOnMain();
  NSError error;
  if (!playBackServerSocket()->acceptOnPortError(kPlaybackPort, &error)) {
    platform::NSLog("The playback server stays closed: %s", error.description().c_str());
  }
}

}  // namespace tarni
