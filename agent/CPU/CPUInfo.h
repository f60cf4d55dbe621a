// CPUInfo: plain facts about the processor. The agent fills in the number of active cores alone;
// the others are kept for callers from outside.
#pragma once

#include <cstdint>
#include <string>

namespace tarni {

struct CPUInfo {
  std::string CPUName;
  unsigned activeCPUCount = 0;
  unsigned physicalCPUCount = 0;
  unsigned logicalCPUCount = 0;
  // MHz.
  std::uint64_t frequency = 0;
};

}  // namespace tarni
