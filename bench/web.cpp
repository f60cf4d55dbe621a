// Pages in web views: what a poll of one and a search in it cost inside a program, beside bare
// evaluations of the same engine on the same page, and a search over the wire beside
// chromedriver's.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "bench/RatioReporter.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::bench {
namespace {

test::Program::Environment programEnvironment() {
  return {{"QT_QPA_PLATFORM", "offscreen"},
          {"QT_QUICK_BACKEND", "software"},
          {"QTWEBENGINE_DISABLE_SANDBOX", "1"}};
}

double median(std::vector<double> seconds) {
  std::ranges::nth_element(seconds, seconds.begin() + static_cast<long>(seconds.size() / 2));
  return seconds.at(seconds.size() / 2);
}

using Measured = std::map<std::string, std::vector<double>>;

// What the program of a major measured, by name.
const Measured& measuredIn(const std::string& major) {
  static std::map<std::string, Measured> all;
  Measured& measured = all[major];
  if (!measured.empty()) return measured;
  std::istringstream lines(test::run({test::built("bin/bench-web-page-" + major),
                                      test::built("share/tarni/webscripts"), TARNI_MANY, "200"},
                                     programEnvironment()));
  // The engine has something to say as well.
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string name;
    double seconds = 0;
    if (fields >> name >> seconds) measured[name].push_back(seconds);
  }
  return measured;
}

void in_page(benchmark::State& state, const std::string& major, const std::string& name) {
  const auto& measured = measuredIn(major);
  const auto found = measured.find(name);
  if (found == measured.end()) return state.SkipWithError("not measured");
  for (auto _ : state) state.SetIterationTime(median(found->second));
}

void find_in_page(benchmark::State& state, const std::string& major) {
  test::Program::Environment all = programEnvironment();
  all["LD_PRELOAD"] = test::built("lib/libtarni.so");
  all["TARNI_SCRIPTS"] = "file://" + test::built("share/tarni/webscripts");
  const test::Program program({test::built("bin/web-sample-" + major), TARNI_MANY}, all);
  const test::Playback playback;
  if (!test::eventually([&] { return playback.find("SPAN").size() == 10'000; })) {
    return state.SkipWithError("the elements are not there");
  }
  const std::string line =
      nlohmann::json{{"functionname", "findelements"}, {"tagname", "SPAN"}}.dump();
  for (auto _ : state) {
    playback.wire().sendLine(line);
    benchmark::DoNotOptimize(nlohmann::json::parse(playback.wire().readMessage()));
  }
}

void find_by_chromedriver(benchmark::State& state) {
  std::istringstream output(test::run({"/usr/bin/python3", TARNI_CHROMEDRIVER_FIND, TARNI_MANY,
                                       std::to_string(state.max_iterations)}));
  const std::vector<double> seconds{std::istream_iterator<double>(output), {}};
  for (auto _ : state) state.SetIterationTime(median(seconds));
}

void addFor(const std::string& major) {
  const std::string qt = "/qt" + major;
  for (const char* name : {"evaluate", "poll", "poll-busy", "query", "find"}) {
    benchmark::RegisterBenchmark(("page:" + std::string(name) + qt).c_str(), in_page, major, name)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMicrosecond);
  }
  const std::string found = "find_in_page" + qt;
  benchmark::RegisterBenchmark(found.c_str(), find_in_page, major)
      ->UseRealTime()
      ->Iterations(10)
      ->Unit(benchmark::kMicrosecond);
  const std::string inEngine = ", in the web engine of Qt " + major;
  compare({"page:poll" + qt, "page:evaluate" + qt, 2, false, "a poll of a page" + inEngine,
           "a bare evaluation"});
  limit({"page:poll-busy" + qt, 1e6, 1, "a poll, on the main thread" + inEngine});
  compare({"page:find" + qt, "page:query" + qt, 3, false, "find 10,000 elements" + inEngine,
           "a bare query for them"});
  compare({.name = found,
           .baseline = "find_by_chromedriver",
           .aim = 1,
           .atLeast = true,
           .what = "find 10,000 elements over the wire" + inEngine,
           .against = "chromedriver's find on the same page"});
}

const bool kWebRegistered = [] {
  benchmark::RegisterBenchmark("find_by_chromedriver", find_by_chromedriver)
      ->UseManualTime()
      ->Iterations(5)
      ->Unit(benchmark::kMicrosecond);
  addFor("5");
  addFor("6");
  return true;
}();

}  // namespace
}  // namespace tarni::bench
