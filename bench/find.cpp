// Finding elements in a headless tree, by everything that a host tool can name.
#include <benchmark/benchmark.h>

#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/XpathManager.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"

namespace tarni::bench {
namespace {

void find(benchmark::State& state, const std::string& tag, const std::string& type,
          const std::string& value, std::size_t expected) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  UIViewsManager manager;
  manager.GetAllViewsForPlayer(window, true);
  UIViewMemoryCache& cache = UIViewMemoryCache::sharedInstance();
  for (auto _ : state) {
    cache.clearMemoryCache();
    manager.findElements(window, tag, type, value);
  }
  if (expected && cache.getAllUIViewsIdentifier().size() != expected) {
    state.SkipWithError("not what was sought");
  }
}

void find_by_text(benchmark::State& state) {
  find(state, "", "text", "Label 99", 1);
}
void find_by_class(benchmark::State& state) {
  find(state, "UILabel", "", "", 0);
}
void find_by_xpath(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  UIViewsManager manager;
  const auto& views = manager.GetAllViewsForPlayer(window, true);
  const auto path = XpathManager::sharedInstance().getPositionXpathOfUIView(views.back());
  if (!path) return state.SkipWithError("the last view has no position");
  find(state, "", "xpath", *path, 0);
}
BENCHMARK(find_by_text)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(find_by_class)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(find_by_xpath)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMicrosecond);

const bool kFindRegistered = [] {
  for (const std::string way : {"text", "class", "xpath"}) {
    limit({"find_by_" + way + "/10000", 5e6, 1, "find by " + way + " among 10,000 views"});
  }
  return true;
}();

}  // namespace
}  // namespace tarni::bench
