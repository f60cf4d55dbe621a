// The walk of the polling hook over a tree that did not change: it runs five times a second for the
// whole life of the program under test.
#include <benchmark/benchmark.h>

#include "agent/elements/UIViewsManager.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"

namespace tarni::bench {
namespace {

std::size_t walk(const platform::UIWindowRef& window) {
  UIViewsManager manager;
  return manager.GetAllViews(window, true).size();
}

void walk_unchanged(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  walk(window);
  walk(window);
  const unsigned long before = allocations();
  std::size_t seen = 0;
  for (auto _ : state) seen += walk(window);
  state.counters["allocations"] =
      static_cast<double>(allocations() - before) / static_cast<double>(state.iterations());
  if (seen != static_cast<std::size_t>(state.iterations() * state.range(0))) {
    state.SkipWithError("the walk missed views");
  }
}
BENCHMARK(walk_unchanged)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

const bool registered = [] {
  for (const double views : {100., 1000., 10000., 100000.}) {
    limit({"walk_unchanged/" + std::to_string(static_cast<long>(views)), 100, views});
  }
  return true;
}();

}  // namespace
}  // namespace tarni::bench
