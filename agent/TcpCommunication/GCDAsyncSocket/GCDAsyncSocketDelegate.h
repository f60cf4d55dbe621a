// GCDAsyncSocketDelegate: what a socket tells its owner. Everything runs on the
// socket's delegate queue, those of one socket in the order in which things happened.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketError.h"
#include "platform/Dispatch/Dispatch.h"

namespace tarni {

class GCDAsyncSocket;
using GCDAsyncSocketRef = std::shared_ptr<GCDAsyncSocket>;

class GCDAsyncSocketDelegate {
 public:
  virtual ~GCDAsyncSocketDelegate() = default;

  virtual void socketDidAcceptNewSocket(const GCDAsyncSocketRef& /*sock*/,
                                        const GCDAsyncSocketRef& /*newSocket*/) {}
  // `data` is the caller's to take.
  virtual void socketDidReadDataWithTag(const GCDAsyncSocketRef& /*sock*/, std::string& /*data*/,
                                        long /*tag*/) {}
  virtual void socketDidWriteDataWithTag(const GCDAsyncSocketRef& /*sock*/, long /*tag*/) {}
  // A read has run out of time. A positive answer extends it by that many seconds, any other fails
  // it. `elapsed`: seconds that the read has had.
  virtual double socketShouldTimeoutReadWithTagElapsedBytesDone(const GCDAsyncSocketRef& /*sock*/,
                                                                long /*tag*/, double /*elapsed*/,
                                                                std::size_t /*bytesDone*/) {
    return 0;
  }
  // `error` is null when the socket was asked to disconnect.
  virtual void socketDidDisconnectWithError(const GCDAsyncSocketRef& /*sock*/,
                                            const std::optional<NSError>& /*error*/) {}
  // The queue for a connection that `sock` accepted; null for one of its own.
  virtual std::shared_ptr<platform::DispatchQueue> newSocketQueueForConnectionFromAddressOnSocket(
      const std::string& /*address*/, const GCDAsyncSocketRef& /*sock*/) {
    return nullptr;
  }
};

}  // namespace tarni
