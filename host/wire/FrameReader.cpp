#include "host/wire/FrameReader.h"

#include <algorithm>
#include <charconv>

#include "host/guard/Printable.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr std::size_t kLengthDigits = 10;
constexpr std::string_view kKeepAlivePrompt = "Are you still there?\r\n";

}  // namespace

void FrameReader::append(std::string_view bytes) {
  if (begin_ > buffer_.size() / 2) {
    buffer_.erase(0, begin_);
    begin_ = 0;
  }
  buffer_.append(bytes);
}

std::optional<std::string> FrameReader::next() {
  if (!skipKeepAlivePrompts()) return std::nullopt;
  const auto length = payloadLength();
  if (!length) return std::nullopt;
  announced_ = kLengthDigits + *length;
  if (pendingBytes() < announced_) return std::nullopt;
  std::string payload = buffer_.substr(begin_ + kLengthDigits, *length);
  begin_ += announced_;
  announced_ = 0;
  return payload;
}

// False while the bytes at hand may still become a prompt.
bool FrameReader::skipKeepAlivePrompts() {
  while (true) {
    const auto pending = std::string_view(buffer_).substr(begin_);
    const auto head = pending.substr(0, kKeepAlivePrompt.size());
    if (head.empty() || !kKeepAlivePrompt.starts_with(head)) return !head.empty();
    if (head.size() < kKeepAlivePrompt.size()) return false;
    begin_ += kKeepAlivePrompt.size();
  }
}

std::optional<std::size_t> FrameReader::payloadLength() const {
  const auto digits = std::string_view(buffer_).substr(begin_, kLengthDigits);
  if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    throw WireError("what answers is no agent: instead of a ten-digit length it sent " +
                    inQuotes(digits));
  }
  if (digits.size() < kLengthDigits) return std::nullopt;
  std::size_t length = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), length);
  if (length > kLongestPayload) {
    throw WireError("the agent announced a message of " + std::string(digits) +
                    " bytes, which is too long to be one");
  }
  return length;
}

}  // namespace tarni::host
