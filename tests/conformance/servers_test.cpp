#include "tests/conformance/Subject.h"

namespace tarni::test {
namespace {

using std::chrono::seconds;

TEST_P(Conformance, BothServersGreetInFrames) {
  const Wire recorder(kRecorderPort);
  const Wire player(kPlaybackPort);
  EXPECT_EQ(recorder.read(54), "0000000044Welcome! RecorderServer StartedSuccessfully ");
  EXPECT_EQ(player.read(68),
            "0000000058Welcome PlayBackServer Started Successfully (v25-Mar-2019)");
}

TEST_P(Conformance, EachServerTakesOneClient) {
  const Wire recorder(kRecorderPort);
  const Wire player(kPlaybackPort);
  recorder.readMessage();
  player.readMessage();
  EXPECT_FALSE(Wire::accepts(kRecorderPort));
  EXPECT_FALSE(Wire::accepts(kPlaybackPort));
}

TEST_P(Conformance, ThePlaybackPortComesBackWithoutGreeting) {
  { Playback first; }
  const Playback second(false);
  EXPECT_EQ(second.command("nothing"), nlohmann::json::array());
}

TEST_P(Conformance, TheFirstCommandEndsRecordingForGood) {
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  playback().command("gettext", "nobody");
  EXPECT_TRUE(recorder.isClosed(seconds(10)));
  EXPECT_FALSE(Wire::accepts(kRecorderPort));
}

TEST_P(Conformance, TheGreetingAsCommandIsDropped) {
  Playback& player = playback();
  player.wire().send("Welcome PlayBackServer Started Successfully");
  EXPECT_FALSE(player.wire().isClosed(std::chrono::milliseconds(100)));
}

TEST_P(Conformance, RecorderCommandsAreNeverAnsweredAndNeverHarm) {
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  for (const char* line : {"STARTobjectspy", "highlight=0", "highlight", "highlight=nine",
                           "highlight=-5", "no such thing", "please stopobjectspy now"}) {
    recorder.sendLine(line);
  }
  recorder.send("\xff\xfe\r\n");
  EXPECT_EQ(playback().find("UIButton", "text", "Log in").size(), 1U);
  EXPECT_TRUE(program_->isRunning());
}

}  // namespace
}  // namespace tarni::test
