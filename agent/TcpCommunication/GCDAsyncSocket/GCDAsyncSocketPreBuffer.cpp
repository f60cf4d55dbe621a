#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketPreBuffer.h"

#include <algorithm>

namespace tarni {
namespace {

// A buffer that one long message blew up is given back.
constexpr std::size_t kKeptCapacity = 1024 * 1024;

}  // namespace

void GCDAsyncSocketPreBuffer::didRead(std::size_t bytes) {
  readOffset_ += bytes;
  if (readOffset_ == writeOffset_) reset();
}

void GCDAsyncSocketPreBuffer::ensureCapacityForWrite(std::size_t bytes) {
  if (memory_.size() - writeOffset_ >= bytes) return;
  const std::string_view unread = readBuffer();
  std::copy(unread.begin(), unread.end(), memory_.begin());
  writeOffset_ = unread.size();
  readOffset_ = 0;
  if (memory_.size() - writeOffset_ < bytes) {
    memory_.resize(std::max({initialCapacity_, memory_.size() * 2, writeOffset_ + bytes}));
  }
}

void GCDAsyncSocketPreBuffer::reset() {
  readOffset_ = writeOffset_ = 0;
  if (memory_.size() > kKeptCapacity) memory_ = std::vector<char>(initialCapacity_);
}

}  // namespace tarni
