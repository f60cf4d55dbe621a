// RatioReporter: the console reporter with a table behind it that says, for each benchmark that
// names a baseline, how many times the baseline it cost in this very run, and what was aimed at.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarni::bench {

// What a benchmark is held against. `name` and `baseline` are full names as Google Benchmark prints
// them, arguments included ("gettext/1").
struct Comparison {
  std::string name;
  std::string baseline;
  double aim = 0;        // the ratio aimed at
  bool atLeast = false;  // the baseline should cost at least `aim` times as much (a speed-up)
};

// An aim that is a plain time for one item, in nanoseconds.
struct Limit {
  std::string name;
  double aimNanoseconds = 0;
  double itemsPerIteration = 1;
};

// An aim for what a benchmark costs beyond its baseline, in nanoseconds.
struct Difference {
  std::string name;
  std::string baseline;
  double aimNanoseconds = 0;
};

// Registered by the benchmark files at start-up.
void compare(Comparison comparison);
void limit(Limit limit);
void difference(Difference difference);

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::optional<double> nanoseconds(const std::string& name) const;

  std::map<std::string, double> nanoseconds_;
};

}  // namespace tarni::bench
