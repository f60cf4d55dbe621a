#include "bench/RatioReporter.h"

#include <cstdio>

namespace tarni::bench {
namespace {

std::vector<Comparison>& comparisons() {
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

const char* verdict(bool kept) {
  return kept ? "kept" : "MISSED";
}

}  // namespace

void compare(Comparison comparison) {
  comparisons().push_back(std::move(comparison));
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

void RatioReporter::Finalize() {
  std::printf("\n%-44s %14s %14s %10s  %s\n", "benchmark", "time", "baseline", "ratio", "aim");
  for (const Comparison& each : comparisons()) {
    const auto time = nanoseconds(each.name);
    const auto baseline = nanoseconds(each.baseline);
    if (!time || !baseline) continue;
    const double ratio = each.atLeast ? *baseline / *time : *time / *baseline;
    const bool kept = each.atLeast ? ratio >= each.aim : ratio <= each.aim;
    std::printf("%-44s %11.1f us %11.1f us %9.2fx  %s %gx: %s\n", each.name.c_str(), *time / 1e3,
                *baseline / 1e3, ratio, each.atLeast ? "at least" : "at most", each.aim,
                verdict(kept));
  }
  for (const Difference& each : differences()) {
    const auto time = nanoseconds(each.name);
    const auto baseline = nanoseconds(each.baseline);
    if (!time || !baseline) continue;
    const double more = *time - *baseline;
    std::printf("%-44s %11.1f us %11.1f us %+8.1f us  under %g us: %s\n", each.name.c_str(),
                *time / 1e3, *baseline / 1e3, more / 1e3, each.aimNanoseconds / 1e3,
                verdict(more < each.aimNanoseconds));
  }
  for (const Limit& each : limits()) {
    const auto time = nanoseconds(each.name);
    if (!time) continue;
    const double item = *time / each.itemsPerIteration;
    std::printf("%-44s %11.1f ns an item %24s  under %g ns: %s\n", each.name.c_str(), item, "",
                each.aimNanoseconds, verdict(item < each.aimNanoseconds));
  }
}

}  // namespace tarni::bench
