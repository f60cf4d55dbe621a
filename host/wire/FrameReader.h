// FrameReader: cuts the bytes that the agent sends into messages.
//
// A message is ten ASCII digits, the length of the payload in bytes, then the payload in UTF-8. The
// keep-alive prompt "Are you still there?\r\n" may stand between two messages, without a length; it
// is skipped. Any thread, one at a time.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/guard/Json.h"

namespace tarni::host {

class FrameReader {
 public:
  // A payload longer than this is taken for a malformed length.
  static constexpr std::size_t kLongestPayload = kMostBytes;

  void append(std::string_view bytes);

  // The next whole payload, or null while bytes of it are missing. Throws WireError when the bytes
  // cannot begin a message; the connection is of no use then.
  std::optional<std::string> next();

  // Bytes of the message that is on its way, its length included, and how many it will have (0
  // while its length is not known).
  std::size_t pendingBytes() const { return buffer_.size() - begin_; }
  std::size_t announcedBytes() const { return announced_; }

 private:
  bool skipKeepAlivePrompts();
  std::optional<std::size_t> payloadLength() const;

  std::string buffer_;
  std::size_t begin_ = 0;
  std::size_t announced_ = 0;
};

}  // namespace tarni::host
