#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncReadPacket.h"

namespace tarni::test {
namespace {

using Progress = GCDAsyncReadPacket::Progress;

void put(GCDAsyncSocketPreBuffer& preBuffer, std::string_view bytes) {
  preBuffer.ensureCapacityForWrite(bytes.size());
  std::ranges::copy(bytes, preBuffer.writeBuffer().begin());
  preBuffer.didWrite(bytes.size());
}

GCDAsyncReadPacket readTo(const std::string& terminator) {
  GCDAsyncReadPacket packet;
  packet.terminator = terminator;
  return packet;
}

TEST(ReadPacketTest, ATerminatorIsFoundHoweverTheBytesArrive) {
  const std::string message = "a\rb\n\r\r--END--\r-\n";
  const std::string terminator = "\r--END--\r";
  const std::string wanted = "a\rb\n\r\r--END--\r";
  for (std::size_t step = 1; step <= message.size(); ++step) {
    GCDAsyncSocketPreBuffer preBuffer;
    GCDAsyncReadPacket packet = readTo(terminator);
    std::size_t sent = 0;
    Progress progress = Progress::Incomplete;
    while (progress == Progress::Incomplete && sent < message.size()) {
      put(preBuffer, std::string_view(message).substr(sent, step));
      sent = std::min(sent + step, message.size());
      progress = packet.readFrom(preBuffer);
    }
    EXPECT_EQ(progress, Progress::Complete) << step;
    EXPECT_EQ(packet.buffer, wanted) << step;
    EXPECT_EQ(preBuffer.readBuffer(), message.substr(wanted.size(), sent - wanted.size())) << step;
  }
}

TEST(ReadPacketTest, WithoutTerminatorEverythingAvailableIsTaken) {
  GCDAsyncSocketPreBuffer preBuffer;
  GCDAsyncReadPacket packet;
  EXPECT_EQ(packet.readFrom(preBuffer), Progress::Incomplete);
  put(preBuffer, "a\r\nb");
  EXPECT_EQ(packet.readFrom(preBuffer), Progress::Complete);
  EXPECT_EQ(packet.buffer, "a\r\nb");
  EXPECT_EQ(preBuffer.availableBytes(), 0U);
}

TEST(ReadPacketTest, AFixedLengthLeavesTheRest) {
  GCDAsyncSocketPreBuffer preBuffer;
  GCDAsyncReadPacket packet;
  packet.readLength = 5;
  put(preBuffer, "abc");
  EXPECT_EQ(packet.readFrom(preBuffer), Progress::Incomplete);
  put(preBuffer, "defg");
  EXPECT_EQ(packet.readFrom(preBuffer), Progress::Complete);
  EXPECT_EQ(packet.buffer, "abcde");
  EXPECT_EQ(preBuffer.readBuffer(), "fg");
}

TEST(ReadPacketTest, OfALineThatIsTooLongItsEndIsLeft) {
  const std::string lines = "abc\r\nabcd\r\nabcdefghijk\r\nx\r\n";
  for (std::size_t step = 1; step <= lines.size(); ++step) {
    GCDAsyncSocketPreBuffer preBuffer;
    std::vector<std::string> taken;
    for (std::size_t sent = 0; taken.size() < 4;) {
      GCDAsyncReadPacket packet = readTo("\r\n");
      packet.maxLength = 5;
      while (packet.readFrom(preBuffer) == Progress::Incomplete) {
        ASSERT_LT(sent, lines.size());
        put(preBuffer, std::string_view(lines).substr(sent, step));
        sent += step;
      }
      taken.push_back(packet.buffer);
    }
    EXPECT_THAT(taken, testing::ElementsAre("abc\r\n", "\r\n", "\r\n", "x\r\n")) << step;
  }
}

}  // namespace
}  // namespace tarni::test
