// The Debian package, unpacked into a clean root, without anything from the build folder.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/Display.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// Made once for all cases.
class Installation : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder() = fs::temp_directory_path() / ("tarni-install-" + std::to_string(getpid()));
    fs::create_directories(folder());
    run({"cpack", "--config", built("CPackConfig.cmake"), "-B", folder().string()});
    run({"dpkg-deb", "-x", package().string(), root().string()});
  }
  static void TearDownTestSuite() { fs::remove_all(folder()); }

  static fs::path& folder() {
    static fs::path path;
    return path;
  }
  static fs::path root() { return folder() / "root"; }
  static fs::path package() {
    for (const auto& entry : fs::directory_iterator(folder())) {
      if (entry.path().extension() == ".deb") return entry.path();
    }
    throw std::runtime_error("cpack made no package");
  }
  static std::string installed(const std::string& path) { return root() / "usr" / path; }
};

TEST_F(Installation, RunsAProgramThatNobodyHereWrote) {
  const Display display;
  const auto home = folder() / "home";
  fs::create_directories(home);
  Program::Environment environment = display.environment();
  environment["HOME"] = environment["TMPDIR"] = environment["XDG_RUNTIME_DIR"] = home.string();
  const Program program({installed("bin/tarni"), "run", "--", "keepassxc"}, environment);
  const Playback playback;
  EXPECT_TRUE(eventually(
      [&] { return playback.find("UIButton", "text", "Create new database").size() == 1; }));
  EXPECT_THAT(program.output(), HasSubstr("agent loaded"));
}

TEST_F(Installation, LinksIntoAProgramByFindPackage) {
  const std::string build = folder() / "linked";
  run({"cmake", "-S", TARNI_LINKED_PROGRAM, "-B", build, "-DCMAKE_PREFIX_PATH=" + installed("")});
  run({"cmake", "--build", build});
  const Program program({build + "/linked"}, {{"QT_QPA_PLATFORM", "offscreen"}});
  const Playback playback;
  EXPECT_TRUE(
      eventually([&] { return playback.find("UIButton", "text", "Installed").size() == 1; }));
}

TEST_F(Installation, BringsManualCompletionAndScripts) {
  EXPECT_THAT(run({"man", "--local-file", installed("share/man/man1/tarni.1")}),
              HasSubstr("tarni record"));
  const std::string completion = installed("share/bash-completion/completions/tarni");
  EXPECT_THAT(run({"bash", "-c",
                   "source " + completion +
                       "; COMP_WORDS=(tarni rec); COMP_CWORD=1; _tarni; "
                       "echo ${COMPREPLY[*]}"}),
              testing::StrEq("record\n"));
  EXPECT_TRUE(fs::exists(installed("share/tarni/webscripts/hybridplayer.js")));
}

}  // namespace
}  // namespace tarni::test
