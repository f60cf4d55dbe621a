// Reading a playback command, by what a host tool may put around the keys that count.
#include <benchmark/benchmark.h>

#include "agent/TcpCommunication/PlaybackMessage.h"
#include "bench/RatioReporter.h"

namespace tarni::bench {
namespace {

void read(benchmark::State& state, const std::string& text) {
  for (auto _ : state) benchmark::DoNotOptimize(PlaybackMessage(text));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
  state.SetComplexityN(state.range(0));
}

void read_keys(benchmark::State& state) {
  std::string text = R"({"functionname":"gettext")";
  for (std::int64_t key = 0; key < state.range(0); ++key) {
    text += ",\"k" + std::to_string(key) + "\":1";
  }
  read(state, text + '}');
}
void read_brackets(benchmark::State& state) {
  read(state, "{\"a\":" + std::string(static_cast<std::size_t>(state.range(0)), '['));
}
void read_text(benchmark::State& state) {
  read(state,
       R"({"datavalue":")" + std::string(static_cast<std::size_t>(state.range(0)), 'x') + "\"}");
}
BENCHMARK(read_keys)->RangeMultiplier(10)->Range(100, 1000000)->Complexity(benchmark::oN);
BENCHMARK(read_brackets)->RangeMultiplier(10)->Range(1000, 10000000)->Complexity(benchmark::oN);
BENCHMARK(read_text)->RangeMultiplier(10)->Range(1000, 10000000)->Complexity(benchmark::oN);

const bool kCommandsRegistered = [] {
  limit({"read_keys/100000", 100e6, 1, "a command with 100,000 keys is read"});
  limit({"read_brackets/10000000", 200e6, 1, "10,000,000 brackets are found to be no command"});
  limit({"read_text/10000000", 200e6, 1, "a command with 10,000,000 letters is read"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
