// A program of the toolkit that measures the agent inside itself: what a walk costs beside the
// toolkit's own walk of the same tree.
#include <benchmark/benchmark.h>

#include <QtWidgets/QApplication>

#include "backends/qt/QtPlatform.h"
#include "backends/qt/quick/QuickExtension.h"
#include "backends/qt/views/QtExtension.h"
#include "bench/RatioReporter.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  const QApplication application(argc, argv);
  tarni::platform::install(tarni::qt::qtPlatform());
  tarni::qt::extensions().add(std::make_unique<tarni::qt::QuickExtension>());
  tarni::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
}
