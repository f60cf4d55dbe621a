#include "bench/RatioReporter.h"

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>

namespace tarni::bench {
namespace {

std::vector<Comparison>& comparisons() {
  static std::vector<Comparison> all;
  return all;
}

std::vector<Comparison>& pairs() {
  static std::vector<Comparison> all;
  return all;
}

std::vector<Limit>& limits() {
  static std::vector<Limit> all;
  return all;
}

std::vector<Difference>& differences() {
  static std::vector<Difference> all;
  return all;
}

// "gettext/real_time" and "gettext/iterations:5" are the benchmark "gettext".
std::string plainName(std::string name) {
  for (const char* suffix :
       {"/iterations:", "/repeats:", "/min_time:", "/real_time", "/manual_time"}) {
    if (const auto at = name.find(suffix); at != std::string::npos) name.erase(at);
  }
  return name;
}

// The processor's time, which other programs on the machine leave alone, except for a benchmark
// that asked for the clock's because others work for it.
double secondsOf(const benchmark::BenchmarkReporter::Run& run) {
  const bool isByTheClock = !run.run_name.time_type.empty();
  return isByTheClock ? run.real_accumulated_time : run.cpu_accumulated_time;
}

using nlohmann::ordered_json;

ordered_json rowOf(const std::string& name, const std::string& what, double measured) {
  ordered_json row;
  row["name"] = name;
  row["what"] = what.empty() ? name : what;
  row["measuredNanoseconds"] = measured;
  return row;
}

// `kind` says what the figure is: "ratio", "times faster", "more" or "an item" (nanoseconds both).
void addFigure(ordered_json& row, const char* kind, double figure, double aim, bool isMet) {
  row["kind"] = kind;
  row["figure"] = figure;
  row["aim"] = aim;
  row["isMet"] = isMet;
}

void addBaseline(ordered_json& row, const std::string& name, const std::string& against,
                 double baseline) {
  row["against"] = against.empty() ? name : against;
  row["baselineNanoseconds"] = baseline;
}

}  // namespace

void compare(Comparison comparison) {
  comparisons().push_back(std::move(comparison));
}

void inPairs(Comparison comparison) {
  pairs().push_back(std::move(comparison));
}

void limit(Limit limit) {
  limits().push_back(std::move(limit));
}

void difference(Difference difference) {
  differences().push_back(std::move(difference));
}

bool RatioReporter::ReportContext(const Context& context) {
  return ConsoleReporter::ReportContext(context);
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.error_occurred) continue;
    const std::string name = plainName(run.benchmark_name());
    counters_[name] = run.counters;
    const double each = secondsOf(run) / static_cast<double>(run.iterations) * 1e9;
    if (run.run_type == Run::RT_Aggregate) {
      if (run.aggregate_name == "median") nanoseconds_[plainName(run.run_name.str())] = each;
    } else if (run.repetitions <= 1) {
      nanoseconds_[name] = each;
    }
  }
}

std::optional<double> RatioReporter::nanoseconds(const std::string& name) const {
  const auto found = nanoseconds_.find(name);
  return found == nanoseconds_.end() ? std::nullopt : std::optional(found->second);
}

ordered_json RatioReporter::rows() const {
  ordered_json all = ordered_json::array();
  for (const Comparison& each : comparisons()) {
    const auto time = nanoseconds(each.name);
    const auto baseline = nanoseconds(each.baseline);
    if (!time || !baseline) continue;
    const double ratio = each.atLeast ? *baseline / *time : *time / *baseline;
    ordered_json& row = all.emplace_back(rowOf(each.name, each.what, *time));
    addBaseline(row, each.baseline, each.against, *baseline);
    addFigure(row, each.atLeast ? "times faster" : "ratio", ratio, each.aim,
              each.atLeast ? ratio >= each.aim : ratio <= each.aim);
  }
  for (const Comparison& each : pairs()) {
    const auto counted = counters_.find(each.name);
    if (counted == counters_.end()) continue;
    const auto value = [&counted](const char* counter) {
      return counted->second.at(counter).value;
    };
    ordered_json& row = all.emplace_back(rowOf(each.name, each.what, value("question") * 1e9));
    addBaseline(row, "echo", each.against, value("echo") * 1e9);
    addFigure(row, "ratio", value("ratio"), each.aim, value("ratio") <= each.aim);
    row["spread"] = value("spread");
  }
  for (const Difference& each : differences()) {
    const auto time = nanoseconds(each.name);
    const auto baseline = nanoseconds(each.baseline);
    if (!time || !baseline) continue;
    const double more = *time - *baseline;
    ordered_json& row = all.emplace_back(rowOf(each.name, each.what, *time));
    addBaseline(row, each.baseline, each.against, *baseline);
    addFigure(row, "more", more, each.aimNanoseconds, more < each.aimNanoseconds);
  }
  for (const Limit& each : limits()) {
    const auto time = nanoseconds(each.name);
    if (!time) continue;
    const double item = *time / each.itemsPerIteration;
    ordered_json& row = all.emplace_back(rowOf(each.name, each.what, *time));
    addFigure(row, "an item", item, each.aimNanoseconds, item < each.aimNanoseconds);
  }
  return all;
}

void RatioReporter::Finalize() {
  const char* const path = std::getenv("TARNI_BENCH_ROWS");
  if (!path) return;
  ordered_json run;
  run["rows"] = rows();
  run["nanoseconds"] = nanoseconds_;
  std::ofstream(path) << run.dump(1) << '\n';
}

}  // namespace tarni::bench
