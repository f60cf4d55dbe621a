// MachHost: the machine as its kernel tells of it. Any thread.
#pragma once

#include "platform/Mach/MachHost.h"

namespace tarni::ios {

class MachHost : public platform::MachHost {
 public:
  std::optional<std::vector<platform::ProcessorTicks>> hostProcessorInfo() override;
  std::optional<platform::VMStatistics64> hostStatistics64() override;
  unsigned activeProcessorCount() override;
  std::uint64_t physicalMemory() override;
  std::optional<std::vector<std::byte>> sysctlbyname(std::string_view name) override;
};

}  // namespace tarni::ios
