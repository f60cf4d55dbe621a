// What `tarni run --isolated` promises: nothing outside the program's network reaches its ports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "tests/host/Tarni.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

// An address that no loopback has.
constexpr const char* kOutside = "192.0.2.1";

// Every address of this machine, those of the loopback included.
std::vector<sockaddr_storage> ownAddresses() {
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0) throw std::runtime_error("no list of addresses");
  std::vector<sockaddr_storage> addresses;
  for (const ifaddrs* each = all; each; each = each->ifa_next) {
    const int family = each->ifa_addr ? each->ifa_addr->sa_family : AF_UNSPEC;
    if (family != AF_INET && family != AF_INET6) continue;
    sockaddr_storage address{};
    std::memcpy(&address, each->ifa_addr,
                family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6));
    addresses.push_back(address);
  }
  freeifaddrs(all);
  return addresses;
}

bool isReached(sockaddr_storage address, std::uint16_t port) {
  const bool is4 = address.ss_family == AF_INET;
  auto& portField = is4 ? reinterpret_cast<sockaddr_in&>(address).sin_port
                        : reinterpret_cast<sockaddr_in6&>(address).sin6_port;
  portField = htons(port);
  const int descriptor = socket(address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool connected = connect(descriptor, reinterpret_cast<const sockaddr*>(&address),
                                 is4 ? sizeof(sockaddr_in) : sizeof(sockaddr_in6)) == 0;
  close(descriptor);
  return connected;
}

class Isolation : public testing::Test {
 protected:
  // A machine with an address that others see, as far as this one's own network goes.
  Isolation() {
    fs::create_directories(folder_);
    run({"ip", "address", "replace", std::string(kOutside) + "/32", "dev", "lo"});
  }
  ~Isolation() override { fs::remove_all(folder_); }

  std::unique_ptr<Program> start(const std::vector<std::string>& options) {
    std::vector<std::string> command{built("bin/tarni"), "run"};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--", built("bin/tarni-headless")});
    return std::make_unique<Program>(command, environment_);
  }
  int reachedPorts() const {
    int count = 0;
    for (const sockaddr_storage& address : ownAddresses()) {
      for (const std::uint16_t port : {kRecorderPort, kPlaybackPort}) {
        count += isReached(address, port) ? 1 : 0;
      }
    }
    return count;
  }
  // What a file of the program's own network says.
  static std::string networkFile(const Program& tarni, const std::string& name) {
    const std::string self = std::to_string(tarni.pid());
    std::string child;
    std::ifstream("/proc/" + self + "/task/" + self + "/children") >> child;
    std::ostringstream text;
    text << std::ifstream("/proc/" + (child.empty() ? self : child) + "/net/" + name).rdbuf();
    return text.str();
  }
  static long interfacesOf(const Program& tarni) {
    const std::string table = networkFile(tarni, "dev");
    return std::ranges::count(table, ':');
  }

  const fs::path folder_ = fs::temp_directory_path() / ("tarni-alone-" + std::to_string(getpid()));
  Program::Environment environment_ = {{"XDG_RUNTIME_DIR", folder_.string()},
                                       {"TARNI_LIBRARY", "/lib/x86_64-linux-gnu/libm.so.6"}};
};

TEST_F(Isolation, OfAProgramLeavesNoWayToItsPorts) {
  const auto program = start({"--isolated=alone"});
  // It is there, and answers inside.
  ASSERT_EQ(tarni({"--in", "alone", "wait"}, environment_).code, 0) << program->output();
  EXPECT_THAT(
      tarni({"--in", "alone", "--json", "find", "UIButton", "--text", "Log in"}, environment_)
          .output,
      HasSubstr("elementID"));
  // Nothing outside reaches it, at whatever address.
  ASSERT_THAT(ownAddresses(), SizeIs(testing::Ge(2)));
  EXPECT_EQ(reachedPorts(), 0);
  EXPECT_EQ(tarni({"--connect-timeout", "0", "find", "UIButton"}, environment_).code, 3);
  // Nor is there a way out of it.
  EXPECT_EQ(interfacesOf(*program), 1) << "more than the loopback interface";
  EXPECT_THAT(networkFile(*program, "fib_trie"), Not(HasSubstr(kOutside)));
}

// What the case above would see if a program were not alone.
TEST_F(Isolation, IsWhatKeepsOthersOut) {
  const auto program = start({});
  ASSERT_TRUE(eventually([] { return Wire::accepts(kPlaybackPort); }));
  // Looking took the one connection, which ends recording: the playback port comes back.
  EXPECT_TRUE(eventually([&] { return reachedPorts() > 0; })) << program->output();
  EXPECT_THAT(networkFile(*program, "fib_trie"), HasSubstr(kOutside));
}

}  // namespace
}  // namespace tarni::test
