// Snapshots and element descriptions against what cannot be avoided: one draw and one encode each.
#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>

#include "agent/AI/AiAPI.h"
#include "agent/elements/UIViewsManager.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"
#include "tests/support/Complete.h"

namespace tarni::bench {
namespace {

constexpr double kQuality = 0.6;

std::size_t drawAndEncode(const platform::UIViewRef& view) {
  const platform::UIImageRef image = test::complete(view->drawViewHierarchy());
  return image ? image->JPEGRepresentation(kQuality).size() : 0;
}

void draw_and_encode(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(drawAndEncode(window));
}
BENCHMARK(draw_and_encode)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void snapshot(benchmark::State& state) {
  makeScreen(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(test::complete(AiAPI().getBase64ImageOfCurrentWindow()));
  }
}
BENCHMARK(snapshot)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void draw_and_encode_each(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  UIViewsManager manager;
  const auto& views = manager.GetAllViewsForPlayer(window, true);
  for (auto _ : state) {
    for (const platform::UIViewRef& view : views) benchmark::DoNotOptimize(drawAndEncode(view));
  }
}
BENCHMARK(draw_and_encode_each)->Arg(1000)->UseRealTime()->Unit(benchmark::kMillisecond);

void ai_findelements(benchmark::State& state) {
  makeScreen(state.range(0));
  for (auto _ : state) {
    const nlohmann::ordered_json answer = test::complete(AiAPI().getAllViewsInformation(""));
    if (answer.size() != static_cast<std::size_t>(state.range(0))) {
      state.SkipWithError("views are missing");
    }
  }
}
BENCHMARK(ai_findelements)->Arg(1000)->UseRealTime()->Unit(benchmark::kMillisecond);

const bool kPicturesRegistered = [] {
  compare({"snapshot/1000", "draw_and_encode/1000", 1.15, false,
           "a snapshot of the window (1,000 views)", "one bare draw and encode"});
  compare({"ai_findelements/1000", "draw_and_encode_each/1000", 1.2, false,
           "describe 1,000 views with their pictures", "bare draws and encodes of them"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
