// The agent in programs that run already, and in those that load their toolkit late.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "tests/host/Tarni.h"
#include "tests/support/Compositor.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using testing::HasSubstr;

Result attachTo(const Program& program, const Program::Environment& environment = {}) {
  return tarni({"attach", std::to_string(program.pid())}, environment);
}

// Waits until its windows are up.
bool hasMapped(const Program& program, const std::string& library) {
  return eventually([&] {
    const std::string maps = contents("/proc/" + std::to_string(program.pid()) + "/maps");
    return maps.find(library) != std::string::npos;
  });
}

class Attaching : public testing::TestWithParam<std::string> {
 protected:
  std::string sample() const { return built("bin/qt-sample-" + GetParam()); }
  Program program_{{sample()}, {{"QT_QPA_PLATFORM", "offscreen"}}};
  void SetUp() override { ASSERT_TRUE(hasMapped(program_, "/libqoffscreen.so")); }
};

INSTANTIATE_TEST_SUITE_P(Qt, Attaching, testing::Values("5", "6"));

void expectServedOnceAttached(Program& program, const std::string& major) {
  const Result attached = attachTo(program);
  EXPECT_EQ(attached.code, 0) << attached.output;
  EXPECT_THAT(attached.output, HasSubstr("uses Qt " + major + "."));
  EXPECT_THAT(attached.output, HasSubstr(": agent loaded, ports 9892 and 9898"));
  const Playback playback;
  playback.command("clickelement", playback.one("UIButton", "text", "Refresh"));
  EXPECT_TRUE(
      eventually([&] { return playback.find("UILabel", "text", "Refreshed").size() == 1; }));
  EXPECT_TRUE(program.isRunning());
}

TEST_P(Attaching, ServesAProgramThatRunsOnAsBefore) {
  expectServedOnceAttached(program_, GetParam());
  const Result again = attachTo(program_);
  EXPECT_EQ(again.code, 5);
  EXPECT_THAT(again.output, HasSubstr("has the agent already"));
}

TEST(AttachingOnWayland, ServesAProgramThatRuns) {
  const Compositor compositor;
  Program program({built("bin/qt-sample-6")}, compositor.environment());
  ASSERT_TRUE(eventually([&] { return !compositor.windows("Tarni Sample").empty(); }));
  expectServedOnceAttached(program, "6");
}

TEST_P(Attaching, SaysThatTheDebuggerIsMissing) {
  const Result refused = attachTo(program_, {{"PATH", "/nowhere"}});
  EXPECT_EQ(refused.code, 5);
  EXPECT_THAT(refused.output, HasSubstr("attaching takes gdb: install the package gdb"));
  EXPECT_TRUE(program_.isRunning());
}

TEST(OutOfReach, IsSaidWithItsReason) {
  const Program without({"sleep", "60"});
  EXPECT_THAT(attachTo(without).output, HasSubstr("uses no Qt with windows"));

  // What a static Qt leaves in a program is its line of how it was built.
  const Folder folder;
  const auto builtIn = folder.path / "static";
  std::filesystem::copy_file("/bin/sleep", builtIn);
  std::ofstream(builtIn, std::ios::app)
      << "Qt 5.15.8 (x86_64-little_endian-lp64 static release build; by GCC 12.2.0)";
  {
    const Program running({builtIn, "60"});
    EXPECT_THAT(attachTo(running).output, HasSubstr("has its toolkit built in (a static Qt)"));
  }
  EXPECT_THAT(tarni({"run", "--", builtIn, "0"}).output,
              HasSubstr("note: " + builtIn.string() + " has its toolkit built in"));

  const auto flatpak = folder.path / "flatpak";
  std::filesystem::copy_file("/bin/true", flatpak);
  EXPECT_THAT(tarni({"run", "--", flatpak, "run", "org.kde.kate"}).output,
              HasSubstr("starts its program in a sandbox, out of the agent's reach"));

  const Program::Environment wayland{{"WAYLAND_DISPLAY", "wayland-9"}, {"DISPLAY", ""}};
  EXPECT_THAT(
      tarni({"run", "--display", "--", "sh", "-c", "echo on $QT_QPA_PLATFORM"}, wayland).output,
      HasSubstr("on xcb"));
}

TEST_P(Attaching, ADebuggerAsksTheAgent) {
  Program::Environment environment = agentEnvironment();
  environment["TARNI_LOG"] = "stderr";
  const Program program({sample()}, environment);
  const Playback playback;
  const std::string refresh = playback.one("UIButton", "text", "Refresh");
  run({"gdb", "-nx", "-batch", "-p", std::to_string(program.pid()), "-ex",
       "call (void)tarni_printViewHierarchy()", "-ex", "call (void)tarni_showMemoryAndCpuStats()"});
  playback.command("clickelement", refresh);
  EXPECT_TRUE(eventually([&] {
    const std::string output = program.output();
    return output.find("UIButton  ") != std::string::npos &&
           output.find("Used Ram ") != std::string::npos;
  })) << program.output();
}

// An interpreter that imports Qt gets the agent then, and its children none.
TEST(LateToolkit, IsFoundWhenAnInterpreterLoadsIt) {
  Program program({"/usr/bin/python3", "-c",
                   "import os\n"
                   "from PyQt5.QtWidgets import QApplication, QPushButton, QWidget\n"
                   "app = QApplication([])\n"
                   "window = QWidget()\n"
                   "button = QPushButton('Late', window)\n"
                   "window.show()\n"
                   "os.system('echo child=$LD_PRELOAD,$QT_QPA_GENERIC_PLUGINS.')\n"
                   "app.exec()\n"},
                  agentEnvironment());
  const Playback playback;
  EXPECT_TRUE(eventually([&] { return playback.find("UIButton", "text", "Late").size() == 1; }))
      << program.output();
  EXPECT_THAT(program.output(), HasSubstr("uses Qt 5."));
  EXPECT_THAT(program.output(), HasSubstr("child=" + preload("") + ",."));
}

}  // namespace
}  // namespace tarni::test
