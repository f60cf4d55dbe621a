// Pairs: a question to another process and a bare echo asked in turn, so that what else the machine
// does, and how fast its processor is just then, meets both alike.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>

namespace tarni::bench {

inline constexpr int kPairs = 5000;

// A question or an echo: sends it and waits for its answer.
using RoundTrip = std::function<void()>;

// Each iteration is one of both, the question's time the iteration's; the benchmark is one of
// manual time. The counters that `inPairs` (RatioReporter.h) reads are set at the end.
void askInPairs(benchmark::State& state, const RoundTrip& question, const RoundTrip& echo);

}  // namespace tarni::bench
