// A person points at rows of a real program and types numbers into `tarni spy`.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/support/Display.h"
#include "tests/support/Program.h"

namespace tarni::test {
namespace {

using std::chrono::seconds;
using testing::HasSubstr;

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// A pipe that the typed numbers go through.
class Typing {
 public:
  Typing() { mkfifo(path.c_str(), 0600); }
  Typing(const Typing&) = delete;
  Typing& operator=(const Typing&) = delete;
  ~Typing() { std::filesystem::remove(path); }

  const std::string path =
      std::filesystem::temp_directory_path() / ("tarni-typing-" + std::to_string(getpid()));
};

class Spying : public testing::Test {
 protected:
  // True when the frame of the outermost element comes, and goes again.
  bool frameShows() const {
    const auto isFramed = [this] { return display_.colorAt(1, 230) == "#00FF00"; };
    return eventually(isFramed) && eventually([&] { return !isFramed(); });
  }

  Display display_;
};

TEST_F(Spying, TenNumbersInARowAreShownAndSpyingEnds) {
  Program::Environment environment = display_.environment();
  environment["TARNI_LOG"] = "stderr";
  Program program({built("bin/tarni"), "run", "--", built("bin/qt-sample-6")}, environment);
  ASSERT_TRUE(
      eventually([&] { return occurrences(program.output(), "ready:") == 1; }, seconds(30)));
  const Typing typing;
  Program spy({"sh", "-c", "exec \"$0\" spy < " + typing.path, built("bin/tarni")});
  std::ofstream numbers(typing.path);
  ASSERT_TRUE(eventually([&] { return occurrences(program.output(), "Switching to spy") == 1; }));

  for (std::size_t picks = 1; picks <= 5; ++picks) {
    display_.click(200, 200);
    ASSERT_TRUE(eventually([&] { return occurrences(spy.output(), "  2  ") == picks; }))
        << spy.output() << program.output();
  }
  for (int typed = 1; typed <= 10; ++typed) {
    numbers << 2 << std::endl;
    EXPECT_TRUE(frameShows()) << typed;
  }
  numbers << 2 << std::endl;
  EXPECT_TRUE(eventually([&] { return occurrences(spy.output(), "not shown") == 1; }));
  spy.signal(SIGINT);
  EXPECT_EQ(spy.wait(seconds(10)), 0);
  EXPECT_TRUE(
      eventually([&] { return occurrences(program.output(), "Switching to recorder") == 1; }));
}

}  // namespace
}  // namespace tarni::test
