// CPUInfoController: the load of each core since the measurement before. One thread at a time.
#pragma once

#include <vector>

#include "agent/CPU/CPUInfo.h"
#include "agent/CPU/CPULoad.h"
#include "platform/Mach/MachHost.h"

namespace tarni {

class CPUInfoController {
 public:
  // Takes the first sample, so that the first measurement counts from here.
  CPUInfoController();

  // One load a core, in core order. When the kernel gives no ticks: zeros, one an active core.
  std::vector<CPULoad> calculateCPUUsage();

  const CPUInfo& cpuInfo() const { return cpuInfo_; }

 private:
  CPUInfo cpuInfo_;
  std::vector<platform::ProcessorTicks> previous_;
};

}  // namespace tarni
