// Finding an element of a live program by its text, a command and its answer over the wire, against
// the same element by its name over the desktop's accessibility bus (AT-SPI), which is how a tool
// without an agent inside finds it. Both on one running program that nobody here wrote.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "bench/RatioReporter.h"
#include "tests/support/Display.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kText = "Create new database";

// A folder of its own for everything that a desktop session keeps.
struct SessionFolder {
  fs::path path = fs::temp_directory_path() / ("tarni-bench-" + std::to_string(getpid()));
  SessionFolder() {
    fs::create_directories(path);
    fs::permissions(path, fs::perms::owner_all);
  }
  ~SessionFolder() { fs::remove_all(path); }
};

// keepassxc with the agent, on a display and in a session with an accessibility bus.
class Session {
 public:
  const test::Playback& playback() const { return playback_; }

  // How many seconds each of `count` searches took.
  std::vector<double> findByName(long count) const {
    std::istringstream output(test::run(
        {"/usr/bin/python3", TARNI_FIND_BY_NAME, "KeePassXC", kText, std::to_string(count)},
        environment()));
    return {std::istream_iterator<double>(output), {}};
  }

 private:
  std::string busAddress() const { return "unix:path=" + (folder_.path / "bus").string(); }

  test::Program::Environment environment() const {
    test::Program::Environment all = display_.environment();
    all["HOME"] = all["TMPDIR"] = all["XDG_RUNTIME_DIR"] = folder_.path;
    all["XDG_CONFIG_HOME"] = all["XDG_DATA_HOME"] = all["XDG_CACHE_HOME"] = "";
    all["DBUS_SESSION_BUS_ADDRESS"] = busAddress();
    all["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
    return all;
  }

  test::Program::Environment agentEnvironment() const {
    test::Program::Environment all = environment();
    all["LD_PRELOAD"] = test::built("lib/libtarni.so");
    return all;
  }

  SessionFolder folder_;
  test::Display display_;
  test::Program bus_{{"dbus-daemon", "--session", "--nofork", "--address=" + busAddress()},
                     environment()};
  bool hasBus_ = test::eventually([this] { return fs::exists(folder_.path / "bus"); });
  test::Program program_{{"keepassxc"}, agentEnvironment()};
  test::Playback playback_;
};

Session& session() {
  static Session shared;
  return shared;
}

void find_by_wire(benchmark::State& state) {
  const test::Playback& playback = session().playback();
  if (!test::eventually([&] { return playback.find("", "text", kText).size() == 1; })) {
    return state.SkipWithError("the button is not there");
  }
  const std::string line = nlohmann::json{
      {"functionname", "findelements"},
      {"tagname", ""},
      {"accessortype", "text"},
      {"accessorvalue", kText}}.dump();
  for (auto _ : state) {
    playback.wire().sendLine(line);
    benchmark::DoNotOptimize(playback.wire().readMessage());
  }
}
BENCHMARK(find_by_wire)->UseRealTime()->MinTime(1)->Unit(benchmark::kMicrosecond);

void find_by_atspi(benchmark::State& state) {
  const std::vector<double> seconds = session().findByName(state.max_iterations);
  auto next = seconds.begin();
  for (auto _ : state) state.SetIterationTime(*next++);
}
BENCHMARK(find_by_atspi)->UseManualTime()->Iterations(20)->Unit(benchmark::kMicrosecond);

const bool kAccessibilityRegistered = [] {
  compare({.name = "find_by_wire",
           .baseline = "find_by_atspi",
           .aim = 1000,
           .atLeast = true,
           .what = "find a button by its text in keepassxc, over the wire",
           .against = "the same by the accessibility bus"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
