#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncReadPacket.h"

#include <algorithm>

namespace tarni {

GCDAsyncReadPacket::Progress GCDAsyncReadPacket::readFrom(GCDAsyncSocketPreBuffer& preBuffer) {
  if (!terminator.empty()) return readToTerminator(preBuffer);
  if (readLength == 0) {
    readAvailable(preBuffer, std::string::npos);
    return buffer.empty() ? Progress::Incomplete : Progress::Complete;
  }
  return readAvailable(preBuffer, readLength);
}

GCDAsyncReadPacket::Progress GCDAsyncReadPacket::readAvailable(GCDAsyncSocketPreBuffer& preBuffer,
                                                               std::size_t limit) {
  const std::size_t length = std::min(limit - buffer.size(), preBuffer.availableBytes());
  buffer.append(preBuffer.readBuffer().substr(0, length));
  preBuffer.didRead(length);
  return buffer.size() == limit ? Progress::Complete : Progress::Incomplete;
}

GCDAsyncReadPacket::Progress GCDAsyncReadPacket::readToTerminator(
    GCDAsyncSocketPreBuffer& preBuffer) {
  const std::string_view chunk = preBuffer.readBuffer();
  const std::size_t found = lengthToTerminator(chunk);
  const std::size_t length = found == std::string::npos ? chunk.size() : found;
  buffer.append(chunk.substr(0, length));
  preBuffer.didRead(length);
  const bool isComplete = found != std::string::npos;
  isTooLong = isTooLong || (maxLength > 0 && buffer.size() > maxLength);
  if (isTooLong) keepLast(isComplete ? terminator.size() : terminator.size() - 1);
  return isComplete ? Progress::Complete : Progress::Incomplete;
}

// What may become a terminator is all that is needed of a line that nobody wants.
void GCDAsyncReadPacket::keepLast(std::size_t length) {
  if (buffer.size() > length) buffer.erase(0, buffer.size() - length);
}

std::size_t GCDAsyncReadPacket::lengthToTerminator(std::string_view chunk) const {
  const std::size_t overlap = std::min(buffer.size(), terminator.size() - 1);
  std::string seam = buffer.substr(buffer.size() - overlap);
  seam += chunk.substr(0, terminator.size() - 1);
  const std::size_t inSeam = seam.find(terminator);
  if (inSeam != std::string::npos) return inSeam + terminator.size() - overlap;
  const std::size_t inChunk = chunk.find(terminator);
  return inChunk == std::string::npos ? inChunk : inChunk + terminator.size();
}

}  // namespace tarni
