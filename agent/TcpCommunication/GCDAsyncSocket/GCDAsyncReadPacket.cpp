#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncReadPacket.h"

#include <algorithm>

namespace tarni {

GCDAsyncReadPacket::Progress GCDAsyncReadPacket::readFrom(GCDAsyncSocketPreBuffer& preBuffer) {
  if (!terminator.empty()) return readToTerminator(preBuffer);
  if (readLength == 0) {
    readAvailable(preBuffer, maxLength == 0 ? std::string::npos : maxLength);
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
  if (maxLength > 0 && buffer.size() + length > maxLength) return Progress::MaxedOut;
  buffer.append(chunk.substr(0, length));
  preBuffer.didRead(length);
  return found == std::string::npos ? Progress::Incomplete : Progress::Complete;
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
