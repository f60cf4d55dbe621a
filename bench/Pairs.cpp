#include "bench/Pairs.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace tarni::bench {
namespace {

double secondsOf(const RoundTrip& roundTrip) {
  const auto begin = std::chrono::steady_clock::now();
  roundTrip();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// What `part` of the values stay below.
double quantile(std::vector<double>& values, double part) {
  const auto at =
      values.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(values.size() - 1) * part);
  std::nth_element(values.begin(), at, values.end());
  return *at;
}

}  // namespace

void askInPairs(benchmark::State& state, const RoundTrip& question, const RoundTrip& echo) {
  std::vector<double> questions;
  std::vector<double> echoes;
  std::vector<double> ratios;
  for (auto _ : state) {
    echoes.push_back(secondsOf(echo));
    questions.push_back(secondsOf(question));
    ratios.push_back(questions.back() / echoes.back());
    state.SetIterationTime(questions.back());
  }
  state.counters["question"] = quantile(questions, 0.5);
  state.counters["echo"] = quantile(echoes, 0.5);
  state.counters["ratio"] = quantile(ratios, 0.5);
  state.counters["spread"] = (quantile(ratios, 0.75) - quantile(ratios, 0.25)) / 2;
}

}  // namespace tarni::bench
