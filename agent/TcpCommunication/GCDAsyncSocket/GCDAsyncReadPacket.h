// GCDAsyncReadPacket: one request to read. Used on the socket queue.
//
// With a terminator it is complete once that has been read, which ends the data handed over; with a
// fixed length, once it holds that many bytes; with neither, as soon as it holds a byte.
#pragma once

#include <cstddef>
#include <string>

#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketPreBuffer.h"

namespace tarni {

struct GCDAsyncReadPacket {
  enum class Progress { Incomplete, Complete };

  // Takes what belongs to the request out of the pre-buffer, and nothing behind it.
  Progress readFrom(GCDAsyncSocketPreBuffer& preBuffer);

  // True for a request with neither.
  bool takesWhatIsAvailable() const { return terminator.empty() && readLength == 0; }

  std::string buffer;
  // With a terminator: of more bytes, itself included, the terminator alone is kept. 0 for none.
  std::size_t maxLength = 0;
  // More than that came.
  bool isTooLong = false;
  // Seconds; negative for none. Grows by each extension.
  double timeout = -1;
  // 0 for none.
  std::size_t readLength = 0;
  // Empty for none.
  std::string terminator;
  long tag = 0;

 private:
  Progress readAvailable(GCDAsyncSocketPreBuffer& preBuffer, std::size_t limit);
  Progress readToTerminator(GCDAsyncSocketPreBuffer& preBuffer);
  void keepLast(std::size_t length);
  // The number of bytes of `chunk` up to and including the terminator, which may have begun in the
  // bytes read before; npos when it does not end in there.
  std::size_t lengthToTerminator(std::string_view chunk) const;
};

}  // namespace tarni
