// The walk of the polling hook over a tree that did not change: it runs five times a second for the
// whole life of the program under test.
#include <benchmark/benchmark.h>

#include "agent/elements/UIViewsManager.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"

namespace tarni::bench {
namespace {

void walk(const platform::UIWindowRef& window) {
  UIViewsManager manager;
  manager.goThroughAllViews(window);
}

void walk_unchanged(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  walk(window);
  walk(window);
  const unsigned long before = allocations();
  for (auto _ : state) walk(window);
  state.counters["allocations"] =
      static_cast<double>(allocations() - before) / static_cast<double>(state.iterations());
  UIViewsManager manager;
  if (manager.GetAllViews(window, true).size() != static_cast<std::size_t>(state.range(0))) {
    state.SkipWithError("the walk missed views");
  }
}
BENCHMARK(walk_unchanged)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

// What no walk can do without: every view and its list of subviews, once.
void walk_bare(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  std::vector<const platform::UIView*> waiting;
  for (auto _ : state) {
    long shown = 0;
    waiting.push_back(window.get());
    while (!waiting.empty()) {
      const platform::UIView* const view = waiting.back();
      waiting.pop_back();
      shown += view->isHidden() ? 0 : 1;
      for (const auto& below : view->subviews()) waiting.push_back(below.get());
    }
    benchmark::DoNotOptimize(shown);
  }
}
BENCHMARK(walk_bare)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

const bool kWalkRegistered = [] {
  for (const long views : {100L, 1000L, 10000L, 100000L}) {
    const std::string count = std::to_string(views);
    limit({"walk_unchanged/" + count, 100, static_cast<double>(views),
           "the poll's walk over " + count + " views, for each"});
  }
  return true;
}();

}  // namespace
}  // namespace tarni::bench
