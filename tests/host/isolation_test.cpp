// What `tarni run --isolated` promises: nothing outside the program's network reaches its ports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

#include "tests/host/Tarni.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

// An address that no loopback has.
constexpr const char* kOutside = "192.0.2.1";

bool isReached(const char* address, std::uint16_t port) {
  const std::string target = std::string("/dev/tcp/") + address + "/" + std::to_string(port);
  return Program({"bash", "-c", "exec 3<>" + target}).wait(std::chrono::seconds(10)) == 0;
}

class Isolation : public testing::Test {
 protected:
  // A machine with an address that others see, as far as this one's own network goes.
  Isolation() { run({"ip", "address", "replace", std::string(kOutside) + "/32", "dev", "lo"}); }

  std::unique_ptr<Program> start(const std::vector<std::string>& options) {
    std::vector<std::string> command{built("bin/tarni"), "run"};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--", built("bin/tarni-headless")});
    return std::make_unique<Program>(command, environment_);
  }
  static int reachedPorts() {
    int count = 0;
    for (const char* const address : {"127.0.0.1", "::1", kOutside}) {
      for (const std::uint16_t port : {kRecorderPort, kPlaybackPort}) {
        count += isReached(address, port) ? 1 : 0;
      }
    }
    return count;
  }
  // What a file of the program's own network says.
  static std::string networkFile(const Program& tarni, const std::string& name) {
    const std::string self = std::to_string(tarni.pid());
    std::ifstream children("/proc/" + self + "/task/" + self + "/children");
    std::string child;
    while (children >> child) continue;  // the program is the last one
    return contents("/proc/" + (child.empty() ? self : child) + "/net/" + name);
  }
  static long interfacesOf(const Program& tarni) {
    const std::string table = networkFile(tarni, "dev");
    return std::ranges::count(table, ':');
  }

  const Folder folder_;
  Program::Environment environment_ = {{"XDG_RUNTIME_DIR", folder_.path},
                                       {"TARNI_LIBRARY", "/lib/x86_64-linux-gnu/libm.so.6"}};
};

TEST_F(Isolation, OfAProgramLeavesNoWayToItsPorts) {
  const auto program = start({"--isolated=alone"});
  // It is there, and answers inside.
  ASSERT_EQ(tarni({"--in", "alone", "wait"}, environment_).code, 0) << program->output();
  EXPECT_THAT(
      tarni({"--in", "alone", "--json", "find", "UIButton", "--text", "Log in"}, environment_)
          .output,
      HasSubstr("\"element\""));
  // Nothing outside reaches it, at whatever address.
  EXPECT_EQ(reachedPorts(), 0);
  EXPECT_EQ(tarni({"--connect-timeout", "0", "find", "UIButton"}, environment_).code, 3);
  EXPECT_THAT(tarni({"windows"}, environment_).output, HasSubstr("run isolated: alone"));
  // Nor is there a way out of it.
  EXPECT_EQ(interfacesOf(*program), 1) << "more than the loopback interface";
  EXPECT_THAT(networkFile(*program, "fib_trie"), Not(HasSubstr(kOutside)));
  // What all this would see of a program that is not alone, and stands beside it all the same.
  const auto other = start({});
  ASSERT_TRUE(eventually([] { return Wire::accepts(kPlaybackPort); }));
  // Looking took the one connection, which ends recording: the playback port comes back.
  EXPECT_TRUE(eventually([&] { return reachedPorts() > 0; })) << other->output();
  EXPECT_THAT(networkFile(*other, "fib_trie"), HasSubstr(kOutside));
}

TEST_F(Isolation, GivesEachProgramANameToBeReachedBy) {
  const auto first = start({"--isolated=first"});
  const auto second = start({"--isolated=second"});
  for (const char* const name : {"first", "second"}) {
    EXPECT_EQ(tarni({"--in", name, "wait"}, environment_).code, 0);
  }
  EXPECT_EQ(tarni({"--in", "first", "type", "--text", "User name", "Ada"}, environment_).code, 0);
  const auto finding = [&](const char* name) {
    return tarni({"--in", name, "find", "UITextField", "--text", "Ada"}, environment_).code;
  };
  EXPECT_EQ(finding("first"), 0);
  EXPECT_EQ(finding("second"), 1);
  const Program builtIn({built("bin/tarni-headless")}, environment_);
  const auto process = " " + std::to_string(builtIn.pid()) + " ";
  EXPECT_TRUE(eventually([&] {
    const auto listed = tarni({"list"}, environment_).output;
    return listed.find("second") != std::string::npos && listed.find(process) != std::string::npos;
  })) << "also one that carries the agent by itself";
  EXPECT_THAT(tarni({"run", "--isolated=first", "--", "true"}, environment_).output,
              HasSubstr("already runs as \"first\""));
  EXPECT_TRUE(eventually([&] {
    return first->output().find("s: reach it with tarni --in first …\n") != std::string::npos;
  })) << first->output();
  EXPECT_THAT(tarni({"--in", "first", "find"}, {{"XDG_RUNTIME_DIR", ""}}).output,
              HasSubstr("one is known in " + folder_.path.string() + "/tarni, but"));
  first->signal(SIGTERM);
  EXPECT_EQ(first->wait(std::chrono::seconds(10)), 128 + SIGTERM);
  const auto gone = tarni({"--in", "first", "find"}, environment_);
  EXPECT_EQ(gone.code, 3);
  EXPECT_THAT(gone.output, HasSubstr("running: second"));
}

}  // namespace
}  // namespace tarni::test
