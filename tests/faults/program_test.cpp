// A program with the agent in it that runs out of descriptors.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>

#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kFind =
    R"({"functionname":"findelements","accessortype":"text","accessorvalue":"Log in"})"
    "\r\n";

class FaultyWorld : public testing::Test {
 protected:
  // The log comes out on standard error; screenshots would go into /tmp.
  FaultyWorld()
      : program_({built("bin/tarni-headless")},
                 {{"TARNI_LOG", "stderr"}, {"KIF_SCREENSHOTS", "/tmp"}}) {}

  void allowDescriptors(rlim_t count) const {
    rlimit limit{};
    ASSERT_EQ(prlimit(program_.pid(), RLIMIT_NOFILE, nullptr, &limit), 0);
    limit.rlim_cur = count;
    ASSERT_EQ(prlimit(program_.pid(), RLIMIT_NOFILE, &limit, nullptr), 0);
  }
  // The lowest number that is free, which is what the next descriptor gets.
  rlim_t nextDescriptor() const {
    rlim_t next = 0;
    while (fs::exists(fs::symlink_status("/proc/" + std::to_string(program_.pid()) + "/fd/" +
                                         std::to_string(next)))) {
      ++next;
    }
    return next;
  }
  bool isLogged(const std::string& text) const {
    return program_.output().find(text) != std::string::npos;
  }

  Program program_;
};

TEST_F(FaultyWorld, WithoutDescriptorsClientsWaitAndAreServedLater) {
  ASSERT_TRUE(eventually([this] { return isLogged("Playback server started on port 9898"); }));
  allowDescriptors(nextDescriptor());
  const Wire player(kPlaybackPort);
  const Wire recorder(kRecorderPort);
  EXPECT_TRUE(eventually([this] { return isLogged("Error in accept() function: Too many open"); }));
  EXPECT_TRUE(program_.isRunning());
  allowDescriptors(1024);
  EXPECT_THAT(recorder.readMessage(), HasSubstr("RecorderServer"));
  EXPECT_THAT(player.readMessage(), HasSubstr("PlayBackServer"));
  player.send(kFind);
  EXPECT_THAT(player.readMessage(), HasSubstr("elementID"));
}

TEST_F(FaultyWorld, WithoutDescriptorsCommandsAreAnsweredAndTheLogSaysWhatIsMissing) {
  const Playback playback;
  playback.command("nothing");  // which gives up the recorder's port, and its descriptors
  ASSERT_TRUE(eventually([] { return !Wire::accepts(kRecorderPort); }));
  allowDescriptors(nextDescriptor());
  EXPECT_THAT(playback.ask({{"functionname", 5}}).at(0).at("exceptionmsg").get<std::string>(),
              HasSubstr("functionname must be a string"));
  EXPECT_TRUE(eventually([this] { return isLogged("Diagnostics: cannot write /tmp/"); }));
  EXPECT_EQ(playback.find("UIButton", "text", "Log in").size(), 1U);
  EXPECT_GT(playback.output("ai_getscreensnapshot", "").value_or("").size(), 1000U);
}

}  // namespace
}  // namespace tarni::test
