#include "agent/RAM/Memory.h"

#include <bit>
#include <cstdint>

#include "agent/CPU/CPUInfoController.h"
#include "agent/RAM/RAMInfoController.h"
#include "platform/Foundation/NSLog.h"

namespace tarni {

using platform::NSLog;

namespace {

// A percentage in an integer format is written as its bits stand, as the log has always had it.
unsigned long asInteger(double percentage) {
  return std::bit_cast<std::uint64_t>(percentage);
}

}  // namespace

void Memory::showMemoryAndCpuStats() const {
  // Zeros when it cannot be read.
  const RAMUsage usage = RAMInfoController().getRAMUsage().value_or(RAMUsage());
  NSLog("Used Ram %lu", static_cast<unsigned long>(usage.usedRam));
  NSLog("Free Ram %lu", static_cast<unsigned long>(usage.freeRam));
  // The load of the moment since the controller was made.
  CPUInfoController processors;
  for (const CPULoad& load : processors.calculateCPUUsage()) {
    NSLog("User CPU Usage %lu", asInteger(load.user));
    NSLog("System CPU Usage %lu", asInteger(load.system));
    NSLog("App CPU Usage %lu", asInteger(load.nice));
  }
}

}  // namespace tarni
