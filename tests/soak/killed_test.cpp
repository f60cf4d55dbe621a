// Hosts that are killed at any moment of their lives, or asked to end: nothing that they started or
// made stays behind, neither a process nor a display, a network, a socket or a folder.
#include <gtest/gtest.h>
#include <httplib.h>
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <thread>

#include "tests/support/Files.h"
#include "tests/support/Program.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using std::chrono::milliseconds;

constexpr const char* kMark = "TARNI_KILLED_TEST";

int rounds() {
  const char* const asked = std::getenv("TARNI_SOAK");
  return asked && std::string(asked) == "full" ? 100 : 3;
}

// The moments are the same in every run.
class Killed : public testing::TestWithParam<int> {
 protected:
  Killed() {
    for (const char* name : {"run", "tmp"}) fs::create_directory(folder_.path / name);
    fs::permissions(folder_.path / "run", fs::perms::owner_all);
  }

  Program start(const std::vector<std::string>& words, Program::Environment environment = {}) {
    std::vector<std::string> command{built("bin/tarni")};
    command.insert(command.end(), words.begin(), words.end());
    environment.insert({{kMark, std::to_string(getpid())},
                        {"QT_QPA_PLATFORM", ""},
                        {"XDG_RUNTIME_DIR", folder_.path / "run"},
                        {"TMPDIR", folder_.path / "tmp"}});
    return Program(command, environment);
  }
  milliseconds moment(int longest) {
    return milliseconds(random_() % static_cast<unsigned>(longest));
  }
  void kill(Program& host, milliseconds after) {
    std::this_thread::sleep_for(after);
    host.signal(GetParam());
    host.wait(kPatience);
    SCOPED_TRACE("killed after " + std::to_string(after.count()) + " ms");
    const bool isGone = eventually([] { return marked().empty(); }, std::chrono::seconds(20));
    EXPECT_TRUE(isGone) << marked() << host.output();
    EXPECT_TRUE(eventually([this] { return left().empty(); }, std::chrono::seconds(5))) << left();
  }

  // The processes that descend from a host, by what they have of its environment.
  static std::string marked() {
    const std::string mark = std::string(kMark) + "=" + std::to_string(getpid());
    std::string found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
      if (contents(entry.path() / "environ").find(mark) == std::string::npos) continue;
      std::string name;
      std::getline(std::ifstream(entry.path() / "comm"), name);
      found += entry.path().filename().string() + " " + name + "\n";
    }
    return found;
  }
  // Files of programs, folders of programs, displays.
  std::string left() const {
    std::string found;
    for (const fs::path& folder :
         {folder_.path / "run" / "tarni", folder_.path / "tmp", fs::path("/tmp/.X11-unix")}) {
      std::error_code none;
      for (const auto& entry : fs::directory_iterator(folder, none)) {
        found += entry.path().string() + "\n";
      }
    }
    return found;
  }
  std::string session(const std::string& steps) const {
    const fs::path file = folder_.path / "session.json";
    std::ofstream(file) << R"({"tarniSession":2,"program":[")" << built("bin/qt-sample-6")
                        << R"("],"steps":[)"
                        << "\n"
                        << steps << "\n]}\n";
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    return file;
  }

  const Folder folder_;
  std::minstd_rand random_{7};
};
INSTANTIATE_TEST_SUITE_P(By, Killed, testing::Values(SIGKILL, SIGTERM),
                         [](const auto& info) { return info.param == SIGKILL ? "Kill" : "Term"; });

const std::vector<std::string> kRun = {"run", "--isolated=killed", "--display", "--fresh", "--"};

TEST_P(Killed, RunLeavesNothing) {
  for (int round = 0; round < rounds() && !HasFailure(); ++round) {
    auto words = kRun;
    words.push_back(built("bin/qt-sample-6"));
    Program host = start(words);
    kill(host, moment(1500));
  }
}

// A program may take its time when it is asked, but one whose host was killed is made to end.
class KilledHard : public Killed {};
INSTANTIATE_TEST_SUITE_P(By, KilledHard, testing::Values(SIGKILL));

TEST_P(KilledHard, LeavesNoProgramThatWouldNotEnd) {
  const std::string stubborn = "trap '' TERM; while :; do read -r line < /dev/zero; done";
  auto words = kRun;
  words.insert(words.end(), {"sh", "-c", stubborn});
  const std::vector<std::string> play = {"play", "--program", "sh -c \"" + stubborn + "\"",
                                         session("")};
  for (const auto& line : {words, play}) {
    Program host = start(line);
    kill(host, milliseconds(1000));
  }
}

// A display that is ended before it is ready leaves its file, as Xvfb leaves its socket.
TEST_P(Killed, ADisplayThatIsJustStartingIsEndedInAnOrderlyWay) {
  const fs::path file = folder_.path / "tmp" / "socket";
  const fs::path display = folder_.path / "Xvfb";
  std::ofstream(display) << "#!/bin/sh\ntouch " << file << "\nsleep 1\ntrap 'rm " << file.string()
                         << "; exit' TERM\necho 7 >/dev/fd/$2\nwhile :; do sleep 0.1; done\n";
  fs::permissions(display, fs::perms::owner_all);
  Program host = start({"run", "--display", "--isolated=killed", "--", "true"},
                       {{"PATH", folder_.path.string() + ":" + std::getenv("PATH")}});
  ASSERT_TRUE(eventually([&] { return fs::exists(file); }));
  kill(host, milliseconds(0));
}

TEST_P(Killed, RecordLeavesNothingAndTheProgramGoesOn) {
  Program program = start({"run", "--isolated=recorded", "--", built("bin/tarni-headless")});
  ASSERT_TRUE(eventually([&] { return program.output().find("ports 9892") != std::string::npos; }));
  const std::string before = marked();
  const std::string files = left();
  for (int round = 0; round < rounds() && !HasFailure(); ++round) {
    Program host = start({"--in", "recorded", "record", "-o", folder_.path / "recorded.json"});
    std::this_thread::sleep_for(moment(300));
    host.signal(GetParam());
    host.wait(kPatience);
    EXPECT_TRUE(eventually([&] { return marked() == before; })) << marked();
    EXPECT_EQ(left(), files);
  }
  kill(program, milliseconds(0));
}

TEST_P(Killed, PlayLeavesNothing) {
  const std::string file =
      session(R"({"act":"check","element":{"locators":[{"find":{"text":"never"}}]},"is":"there"})");
  for (int round = 0; round < rounds() && !HasFailure(); ++round) {
    Program host = start({"play", "--display", file});
    kill(host, moment(2000));
  }
}

TEST_P(Killed, WebDriverLeavesNothing) {
  for (int round = 0; round < rounds() && !HasFailure(); ++round) {
    Program host = start({"webdriver", "--port", "4799"});
    std::thread client([] {
      const json wanted = {
          {"capabilities", {{"alwaysMatch", {{"appium:app", built("bin/qt-sample-6")}}}}}};
      httplib::Client http("127.0.0.1", 4799);
      const auto isUp = [&] { return static_cast<bool>(http.Get("/status")); };
      if (eventually(isUp, milliseconds(1000)))
        http.Post("/session", wanted.dump(), "application/json");
    });
    kill(host, moment(2500));
    client.join();
  }
}

}  // namespace
}  // namespace tarni::test
