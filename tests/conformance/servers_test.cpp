#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

TEST_P(Conformance, EachServerGreetsItsOneClientAndTheFirstCommandEndsRecordingForGood) {
  const Wire recorder(kRecorderPort);
  const Wire player(kPlaybackPort);
  EXPECT_EQ(recorder.read(54), "0000000044Welcome! RecorderServer StartedSuccessfully ");
  EXPECT_EQ(player.read(68),
            "0000000058Welcome PlayBackServer Started Successfully (v25-Mar-2019)");
  EXPECT_FALSE(Wire::accepts(kRecorderPort));
  EXPECT_FALSE(Wire::accepts(kPlaybackPort));
  player.sendLine(R"({"functionname":"gettext","accessorvalue":"nobody"})");
  EXPECT_EQ(player.readMessage(), "[]");
  EXPECT_TRUE(recorder.isClosed(std::chrono::seconds(10)));
  EXPECT_FALSE(Wire::accepts(kRecorderPort));
}

TEST_P(Conformance, AHostToolThatPlaysNothingEndsRecordingAsItLeaves) {
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  {
    const Wire player(kPlaybackPort);
    player.readMessage();
    EXPECT_FALSE(recorder.isClosed(std::chrono::milliseconds(0)));
  }
  EXPECT_TRUE(recorder.seesClose());
  const Wire next(kPlaybackPort);
  next.send("Welcome PlayBackServer Started Successfully");
  EXPECT_FALSE(next.isClosed(std::chrono::milliseconds(100)))
      << "the greeting sent back is dropped";
}

}  // namespace
}  // namespace tarni::test
