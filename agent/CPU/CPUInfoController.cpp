#include "agent/CPU/CPUInfoController.h"

#include <algorithm>

#include "platform/Platform.h"

namespace tarni {

using platform::NSLog;
using platform::ProcessorTicks;

namespace {

CPULoad loadBetween(const ProcessorTicks& before, const ProcessorTicks& now) {
  // Unsigned, so that a counter that has wrapped still gives the ticks between.
  const std::uint32_t system = now.system - before.system;
  const std::uint32_t user = now.user - before.user;
  const std::uint32_t nice = now.nice - before.nice;
  const std::uint32_t idle = now.idle - before.idle;
  const double totalWithoutNice = std::max(double(system) + user + idle, 1.0);
  const double total = std::max(double(system) + user + nice + idle, 1.0);
  CPULoad load{.system = system / total * 100.0,
               .user = user / total * 100.0,
               .nice = nice / total * 100.0,
               .systemWithoutNice = system / totalWithoutNice * 100.0,
               .userWithoutNice = user / totalWithoutNice * 100.0};
  load.total = load.system + load.user + load.nice;
  return load;
}

}  // namespace

CPUInfoController::CPUInfoController() {
  platform::MachHost& host = *platform::current().machHost;
  cpuInfo_.activeCPUCount = host.activeProcessorCount();
  previous_ = host.hostProcessorInfo().value_or(std::vector<ProcessorTicks>());
}

std::vector<CPULoad> CPUInfoController::calculateCPUUsage() {
  auto ticks = platform::current().machHost->hostProcessorInfo();
  if (!ticks) {
    NSLog("Throwing to error");
    return std::vector<CPULoad>(cpuInfo_.activeCPUCount);
  }
  NSLog("Processor Count is %zu", ticks->size());
  // A core that has come since the sample before counts from boot.
  previous_.resize(ticks->size());
  std::vector<CPULoad> loads;
  loads.reserve(ticks->size());
  std::transform(previous_.begin(), previous_.end(), ticks->begin(), std::back_inserter(loads),
                 loadBetween);
  previous_ = std::move(*ticks);
  return loads;
}

}  // namespace tarni
