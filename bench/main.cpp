#include <benchmark/benchmark.h>

#include "bench/RatioReporter.h"

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  tarni::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
}
