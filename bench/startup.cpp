// What loading the agent adds to the start of a program.
#include <benchmark/benchmark.h>

#include "bench/RatioReporter.h"
#include "tests/support/Program.h"

namespace tarni::bench {
namespace {

void start(benchmark::State& state, const std::string& program, bool withAgent) {
  test::Program::Environment environment{{"QT_QPA_PLATFORM", "offscreen"}};
  if (withAgent) environment["LD_PRELOAD"] = test::built("lib/libtarni.so");
  for (auto _ : state) {
    test::Program started({test::built("bin/" + program)}, environment);
    if (started.wait(std::chrono::seconds(20)) != 0) {
      state.SkipWithError(started.output().c_str());
      return;
    }
  }
}

const bool kStartupRegistered = [] {
  for (const char* major : {"5", "6"}) {
    const std::string program = std::string("bench-bare-qt-") + major;
    const std::string bare = "start_qt" + std::string(major) + "_bare";
    const std::string loaded = "start_qt" + std::string(major) + "_with_agent";
    for (const auto& [name, withAgent] : {std::pair(bare, false), std::pair(loaded, true)}) {
      benchmark::RegisterBenchmark(name.c_str(), start, program, withAgent)
          ->Iterations(20)
          ->UseRealTime()
          ->Unit(benchmark::kMillisecond);
    }
    difference({loaded, bare, 30e6, std::string("start a Qt ") + major + " program with the agent",
                "the same without it"});
  }
  return true;
}();

}  // namespace
}  // namespace tarni::bench
