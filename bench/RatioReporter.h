// RatioReporter: the console reporter, which also holds each figure against what was aimed at: a
// baseline of the same run, or a plain time. The rows go as JSON to the file that TARNI_BENCH_ROWS
// names, for bench/report.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace tarni::bench {

// What a benchmark is held against. `name` and `baseline` are full names as Google Benchmark prints
// them, arguments included ("gettext/1"); `what` and `against` say them in a reader's words.
struct Comparison {
  std::string name;
  std::string baseline;  // none where the benchmark has it in itself
  double aim = 0;        // the ratio aimed at
  bool atLeast = false;  // the baseline should cost at least `aim` times as much (a speed-up)
  std::string what = {};
  std::string against = {};
};

// An aim that is a plain time for one item, in nanoseconds.
struct Limit {
  std::string name;
  double aimNanoseconds = 0;
  double itemsPerIteration = 1;
  std::string what = {};
};

// An aim for what a benchmark costs beyond its baseline, in nanoseconds.
struct Difference {
  std::string name;
  std::string baseline;
  double aimNanoseconds = 0;
  std::string what = {};
  std::string against = {};
};

// Registered by the benchmark files at start-up.
void compare(Comparison comparison);
// What the benchmark itself holds against each other, see Pairs.h: the figure is the median of the
// ratios of single pairs, its spread half of what lies between their quartiles. No baseline.
void inPairs(Comparison comparison);
void limit(Limit limit);
void difference(Difference difference);

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::optional<double> nanoseconds(const std::string& name) const;
  nlohmann::ordered_json rows() const;

  std::map<std::string, double> nanoseconds_;
  std::map<std::string, benchmark::UserCounters> counters_;
};

}  // namespace tarni::bench
