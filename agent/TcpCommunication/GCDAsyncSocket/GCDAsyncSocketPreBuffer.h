// GCDAsyncSocketPreBuffer: the bytes that were read ahead of a request. It grows to hold them and
// is reset when emptied. Used on the socket queue.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace tarni {

class GCDAsyncSocketPreBuffer {
 public:
  // Takes its first memory when something is to be written.
  explicit GCDAsyncSocketPreBuffer(std::size_t capacity = 4096) : initialCapacity_(capacity) {}

  std::size_t availableBytes() const { return writeOffset_ - readOffset_; }
  // The unread bytes. Valid until the next call that writes.
  std::string_view readBuffer() const { return {memory_.data() + readOffset_, availableBytes()}; }
  void didRead(std::size_t bytes);

  // Room for at least `bytes` more.
  void ensureCapacityForWrite(std::size_t bytes);
  std::span<char> writeBuffer() { return std::span(memory_).subspan(writeOffset_); }
  void didWrite(std::size_t bytes) { writeOffset_ += bytes; }

  void reset();

 private:
  std::size_t initialCapacity_;
  std::vector<char> memory_;
  std::size_t readOffset_ = 0;
  std::size_t writeOffset_ = 0;
};

}  // namespace tarni
