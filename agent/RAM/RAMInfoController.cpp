#include "agent/RAM/RAMInfoController.h"

#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr std::uint64_t kPageSize = 4096;

}  // namespace

std::uint64_t RAMInfoController::getRAMTotal() const {
  return platform::current().machHost->physicalMemory();
}

std::optional<RAMUsage> RAMInfoController::getRAMUsage() const {
  const auto statistics = platform::current().machHost->hostStatistics64();
  if (!statistics) return std::nullopt;
  RAMUsage usage;
  usage.activeRam = statistics->activePages * kPageSize;
  usage.inactiveRam = statistics->inactivePages * kPageSize;
  usage.wiredRam = statistics->wiredPages * kPageSize;
  usage.usedRam = usage.activeRam + usage.inactiveRam + usage.wiredRam;
  usage.freeRam = getRAMTotal() - usage.usedRam;
  usage.pageIns = statistics->pageIns;
  usage.pageOuts = statistics->pageOuts;
  usage.pageFaults = statistics->faults;
  return usage;
}

}  // namespace tarni
