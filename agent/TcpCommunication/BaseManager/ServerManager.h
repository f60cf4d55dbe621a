// ServerManager: the agent's two servers and the only code that reads from and writes to the
// network.
//
// The recorder server (port 9892) streams recorded steps out and takes three spy commands; the
// playback server (port 9898) takes one command at a time and writes one answer to each. Each has
// one host tool at a time: while it is connected, the port does not listen. Only the playback
// server listens again after its host tool has gone.
//
// Any thread; delegate operations run on the delegate queue of each server, commands of both on the
// main queue.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocket.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketDelegate.h"
#include "agent/TcpCommunication/PlaybackMessage.h"
#include "platform/Dispatch/Dispatch.h"
#include "platform/Task.h"

namespace tarni {

class ServerManager : public GCDAsyncSocketDelegate,
                      public std::enable_shared_from_this<ServerManager> {
 public:
  static constexpr std::uint16_t kRecorderPort = 9892;
  static constexpr std::uint16_t kPlaybackPort = 9898;

  // The one of the agent.
  static ServerManager& serverManager();
  // One more, for tests. Opens no port.
  static std::shared_ptr<ServerManager> make();
  // The sockets lose their delegate and close.
  ~ServerManager() override;

  // Sends `request` to the recorder's host tool, opening the port first when that has not
  // succeeded yet. Without a host tool the step is lost, but for the last one, which greets the
  // host tool that connects next.
  void initialiseRecorderServerOnPortNumberWithRecorderRequest(std::uint16_t port,
                                                               const std::string& request);
  // Opens the playback server; `response` greets the first host tool. Called once.
  void initialisePlayBackServerOnPortNumberWithPlayBackResponse(std::uint16_t port,
                                                                const std::string& response);
  // Closes what the recorder server holds: its host tool's connection, or its port.
  void stopRecordingWhilePlayBack();

  // The write-then-read step: writes what is pending for the server of `sock`, then reads whatever
  // arrives, in front of the read that the end of the write queues.
  void socketDidConnectToHostPort(const GCDAsyncSocketRef& sock, const std::string& host,
                                  std::uint16_t port);
  void socketDidAcceptNewSocket(const GCDAsyncSocketRef& sock,
                                const GCDAsyncSocketRef& newSocket) override;
  void socketDidReadDataWithTag(const GCDAsyncSocketRef& sock, std::string& data,
                                long tag) override;
  void socketDidWriteDataWithTag(const GCDAsyncSocketRef& sock, long tag) override;
  double socketShouldTimeoutReadWithTagElapsedBytesDone(const GCDAsyncSocketRef& sock, long tag,
                                                        double elapsed,
                                                        std::size_t bytesDone) override;
  void socketDidDisconnectWithError(const GCDAsyncSocketRef& sock,
                                    const std::optional<NSError>& error) override;

  bool isRecorderRunning() const { return read(isRecorderRunning_); }
  bool isPlaybackRunning() const { return read(isPlaybackRunning_); }
  // True from the first command on. Kept for callers from outside.
  bool IsPlaybackGetResponse() const { return read(IsPlaybackGetResponse_); }
  GCDAsyncSocketRef recorderServerSocket() const { return read(recorderServerSocket_); }
  GCDAsyncSocketRef playBackServerSocket() const { return read(playBackServerSocket_); }

 private:
  // The connections of one server, under a lock of their own.
  struct SocketArray {
    SocketArray() { sockets.reserve(1); }
    void add(const GCDAsyncSocketRef& sock);
    void remove(const GCDAsyncSocketRef& sock);

    std::recursive_mutex monitor;
    std::vector<GCDAsyncSocketRef> sockets;
  };

  ServerManager();

  template <typename Value>
  Value read(const Value& value) const {
    const std::lock_guard lock(mutex_);
    return value;
  }
  template <typename Value>
  void write(Value& value, std::type_identity_t<Value> newValue) {
    const std::lock_guard lock(mutex_);
    value = std::move(newValue);
  }

  // Takes the place of the listening socket. False when another connection was quicker.
  bool replaceListener(GCDAsyncSocketRef& current, const GCDAsyncSocketRef& listener,
                       const GCDAsyncSocketRef& connection);
  void writePendingRecorderData(const GCDAsyncSocketRef& sock);

  // --- on the main queue
  platform::Task<void> handlePlaybackCommandOnMain(GCDAsyncSocketRef sock, PlaybackMessage message);
  platform::Task<void> acceptPlaybackAgainOnMain(GCDAsyncSocketRef gone);

  mutable std::mutex mutex_;  // guards what is read and written below
  std::mutex writeThenRead_;  // held while the two are queued
  bool isRecorderRunning_ = false;
  bool isPlaybackRunning_ = false;
  bool IsPlaybackGetResponse_ = false;
  GCDAsyncSocketRef recorderServerSocket_;
  GCDAsyncSocketRef playBackServerSocket_;
  std::string jsonRecorderServerData_;
  const std::shared_ptr<platform::DispatchQueue> socketRecorderServerQueue_;
  SocketArray connectedRecorderSocketArray_;
  SocketArray connectedPlayBackSocketArray_;
  std::string jsonPlayBackServerData_;
  const std::shared_ptr<platform::DispatchQueue> socketPlaybackServerQueue_;
};

}  // namespace tarni
