// GCDAsyncWritePacket: one request to write. Used on the socket queue.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>

namespace tarni {

// What was asked to be written and is not yet handed to the system. Any thread.
struct PendingWrites {
  std::atomic<std::size_t> messages = 0;
  std::atomic<std::size_t> bytes = 0;
};

class GCDAsyncWritePacket {
 public:
  GCDAsyncWritePacket(std::string packetData, double packetTimeout, long packetTag,
                      std::shared_ptr<PendingWrites> pending)
      : data(std::move(packetData)),
        timeout(packetTimeout),
        tag(packetTag),
        pending_(std::move(pending)) {
    ++pending_->messages;
    pending_->bytes += data.size();
  }
  ~GCDAsyncWritePacket() {
    --pending_->messages;
    pending_->bytes -= data.size();
  }
  GCDAsyncWritePacket(const GCDAsyncWritePacket&) = delete;
  GCDAsyncWritePacket& operator=(const GCDAsyncWritePacket&) = delete;

  const std::string data;
  std::size_t bytesDone = 0;
  // Seconds; negative for none.
  const double timeout;
  const long tag;

 private:
  const std::shared_ptr<PendingWrites> pending_;
};

}  // namespace tarni
