// Every way of loading the agent, into whole programs and looked at over the wire.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* kGreeting = "Welcome PlayBackServer Started Successfully (v25-Mar-2019)";

std::string launcher() {
  return built("lib/libtarni.so");
}

std::string greeting() {
  return Wire(kPlaybackPort).readMessage();
}

std::string sample(const std::string& major) {
  return built("bin/qt-sample-" + major);
}

class Loading : public testing::TestWithParam<std::string> {};

TEST_P(Loading, ByPreloadSaysWhatItFound) {
  Program program({sample(GetParam())}, agentEnvironment());
  // A host tool that leaves the playback port makes the agent open both ports anew.
  const Wire playback(kPlaybackPort);
  EXPECT_EQ(playback.readMessage(), kGreeting);
  EXPECT_EQ(Wire(kRecorderPort).readMessage(), "Welcome! RecorderServer StartedSuccessfully ");
  EXPECT_THAT(program.output(),
              HasSubstr("tarni: " + sample(GetParam()) + " uses Qt " + GetParam() + "."));
  EXPECT_THAT(program.output(), HasSubstr(": agent loaded, ports 9892 and 9898\n"));
}

TEST_P(Loading, PassesThroughWrappersThatItLeavesAlone) {
  Program program({"/bin/sh", "-c", "timeout 60 " + sample(GetParam()) + "; true"},
                  agentEnvironment());
  EXPECT_EQ(greeting(), kGreeting);
  EXPECT_THAT(program.output(), Not(HasSubstr("not loaded")));
}

TEST_P(Loading, TwiceStartsOneAgent) {
  Program::Environment environment = agentEnvironment();
  environment["QT_PLUGIN_PATH"] = built("lib");
  environment["QT_QPA_GENERIC_PLUGINS"] = "tarni";
  environment["TARNI_LOG"] = "stderr";
  Program program({sample(GetParam())}, environment);
  const Playback playback;
  EXPECT_EQ(playback.find("UIButton", "text", "Log in").size(), 1U);
  // The log is written after the fact.
  std::string output;
  ASSERT_TRUE(eventually([&] {
    output = program.output();
    return output.find("Recorder server started") != std::string::npos;
  })) << output;
  const std::string line = "Loading TARNI IOS INSTRUMENTOR...";
  const auto first = output.find(line);
  ASSERT_NE(first, std::string::npos) << output;
  EXPECT_EQ(output.find(line, first + 1), std::string::npos) << output;
}

TEST_P(Loading, AToolkitLibraryThatComesLateIsServedToo) {
  Program::Environment environment = agentEnvironment();
  environment["QT_QUICK_BACKEND"] = "software";
  Program program(
      {built("bin/qt-late-" + GetParam()), built("lib/libqt-late-quick-" + GetParam() + ".so")},
      environment);
  const Playback playback;
  playback.command("clickelement", playback.one("UIButton", "text", "Open"));
  EXPECT_TRUE(eventually([&] { return playback.find("UILabel", "text", "Late").size() == 1; }))
      << program.output();
}

TEST_P(Loading, ByLinkingOrAsAGenericPlugin) {
  Program::Environment environment{{"QT_QPA_PLATFORM", "offscreen"}};
  {
    const Program linked({built("bin/qt-linked-sample-" + GetParam())}, environment);
    EXPECT_EQ(greeting(), kGreeting);
  }
  environment["QT_PLUGIN_PATH"] = built("lib");
  environment["QT_QPA_GENERIC_PLUGINS"] = "tarni";
  const Program program({sample(GetParam())}, environment);
  EXPECT_EQ(greeting(), kGreeting);
}

TEST_P(Loading, ProgramsLookUpTheAddressOfTheScripts) {
  const std::string path = built("lib/libtarni-qt" + GetParam() + ".so");
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  ASSERT_TRUE(library) << dlerror();
  EXPECT_TRUE(dlsym(library, "_ZN5tarni14REMOTE_CDN_URLB5cxx11E"));
}

INSTANTIATE_TEST_SUITE_P(Qt, Loading, testing::Values("5", "6"));

TEST(Launcher, LeavesProgramsWithoutAToolkitAlone) {
  EXPECT_THAT(run({"/bin/sh", "-c", "echo hello; printenv LD_PRELOAD"}, agentEnvironment()),
              testing::StrEq("hello\n" + preload(launcher()) + "\n"));
  Program::Environment verbose = agentEnvironment();
  verbose["TARNI_VERBOSE"] = "1";
  EXPECT_THAT(run({"/usr/bin/env", "true"}, verbose),
              HasSubstr("uses no toolkit known to tarni: not loaded\n"));
  EXPECT_FALSE(Wire::accepts(kPlaybackPort));
}

// Only what the launcher itself put there goes: another preloaded library stays for the children.
TEST_P(Loading, KeepsOutOfTheProgramsChildren) {
  const std::vector<std::string> parent = {built("bin/qt-parent-" + GetParam()),
                                           "echo child=$LD_PRELOAD"};
  Program::Environment environment = agentEnvironment();
  EXPECT_THAT(run(parent, environment), HasSubstr("child=" + preload("") + "\n"));
  environment["LD_PRELOAD"] = preload(launcher() + ":libm.so.6");
  EXPECT_THAT(run(parent, environment), HasSubstr("child=" + preload("libm.so.6") + "\n"));
}

// Such a process may be a helper of the program, or the program's own tool.
TEST_P(Loading, StartsNoAgentWithoutWindows) {
  Program::Environment environment = agentEnvironment();
  environment["TARNI_LOG"] = "stderr";
  environment["WITHOUT_WINDOWS"] = "1";
  const std::string output = run({built("bin/qt-parent-" + GetParam()), "true"}, environment);
  EXPECT_THAT(output, HasSubstr("The program has no windows: the agent is not started"));
}

TEST(Launcher, SaysWhyItCannotLoad) {
  const Folder folder;
  const std::string alone = folder.path / "libtarni.so";
  std::filesystem::copy_file(launcher(), alone);
  const std::string output =
      run({built("bin/qt-parent-5"), "true"},
          {{"LD_PRELOAD", preload(alone)}, {"QT_QPA_PLATFORM", "offscreen"}});
  EXPECT_THAT(output, HasSubstr("agent not loaded: " + folder.path.string() + "/libtarni-qt5.so"));
}

}  // namespace
}  // namespace tarni::test
