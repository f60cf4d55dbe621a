// Reads of the socket class: the input says which requests there are and how the bytes arrive. What
// is handed over must be what a reader of the whole text would find.
#include <fuzzer/FuzzedDataProvider.h>

#include <stdexcept>
#include <string>

#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncReadPacket.h"
#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketPreBuffer.h"

namespace {

using tarni::GCDAsyncReadPacket;
using tarni::GCDAsyncSocketPreBuffer;
using Progress = GCDAsyncReadPacket::Progress;

// The bytes that have arrived and those that have not.
class Connection {
 public:
  Connection(FuzzedDataProvider& input, std::string text)
      : input_(input), text_(std::move(text)), buffer_(input.ConsumeIntegralInRange(1, 64)) {}

  // False when there is no more.
  bool receive() {
    const std::size_t left = text_.size() - arrived_;
    if (left == 0) return false;
    const auto count = input_.ConsumeIntegralInRange<std::size_t>(1, left);
    buffer_.ensureCapacityForWrite(count);
    text_.copy(buffer_.writeBuffer().data(), count, arrived_);
    buffer_.didWrite(count);
    arrived_ += count;
    return true;
  }
  GCDAsyncSocketPreBuffer& buffer() { return buffer_; }
  // What no request has taken yet.
  std::string_view untaken() const { return std::string_view(text_).substr(taken_); }
  std::size_t available() const { return arrived_ - taken_; }
  // Of those, what the request has taken by now.
  std::size_t consumed() const { return available() - buffer_.availableBytes(); }
  void take(std::size_t count) { taken_ += count; }

 private:
  FuzzedDataProvider& input_;
  const std::string text_;
  GCDAsyncSocketPreBuffer buffer_;
  std::size_t arrived_ = 0;
  std::size_t taken_ = 0;
};

void require(bool holds, const char* what) {
  if (!holds) throw std::logic_error(what);
}

GCDAsyncReadPacket makeRequest(FuzzedDataProvider& input) {
  GCDAsyncReadPacket request;
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      break;
    case 1:
      request.readLength = input.ConsumeIntegralInRange<std::size_t>(1, 40);
      break;
    case 2:
      request.terminator = "\r\n";
      break;
    default:
      request.terminator = input.ConsumeRandomLengthString(5);
      break;
  }
  if (!request.terminator.empty() && input.ConsumeBool()) {
    request.maxLength = input.ConsumeIntegralInRange<std::size_t>(1, 40);
  }
  return request;
}

// What the request should be given of the untaken text, as far as that has an end.
void check(const GCDAsyncReadPacket& request, Connection& connection, Progress progress) {
  const std::string_view untaken = connection.untaken();
  if (request.isTooLong) {
    require(progress == Progress::Incomplete || request.buffer == request.terminator,
            "more than the terminator is left");
    require(connection.consumed() > request.maxLength, "it is not too long");
    if (progress == Progress::Complete) {
      require(connection.consumed() == untaken.find(request.terminator) + request.terminator.size(),
              "not the first terminator");
    }
    return;
  }
  require(untaken.starts_with(request.buffer), "bytes were lost, doubled or swapped");
  const std::size_t length = request.buffer.size();
  if (!request.terminator.empty()) {
    const std::size_t end = untaken.find(request.terminator);
    if (progress == Progress::Complete) {
      require(length == end + request.terminator.size(), "not the first terminator");
    } else if (progress == Progress::Incomplete) {
      const std::string_view arrived = untaken.substr(0, connection.available());
      require(arrived.find(request.terminator) == std::string_view::npos,
              "a terminator was missed");
    }
  } else if (progress == Progress::Complete) {
    require(length > 0, "nothing was read");
    if (request.readLength > 0) require(length == request.readLength, "not the fixed length");
  }
  require(request.maxLength == 0 || length <= request.maxLength, "more than was allowed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  Connection connection(input, input.ConsumeRandomLengthString(4096));
  while (input.remaining_bytes() > 0) {
    GCDAsyncReadPacket request = makeRequest(input);
    Progress progress = request.readFrom(connection.buffer());
    check(request, connection, progress);
    while (progress == Progress::Incomplete && connection.receive()) {
      progress = request.readFrom(connection.buffer());
      check(request, connection, progress);
    }
    if (progress != Progress::Complete) break;
    connection.take(connection.consumed());
  }
  return 0;
}
