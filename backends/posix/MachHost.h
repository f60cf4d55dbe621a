// MachHost: the machine as /proc tells of it. Any thread.
#pragma once

#include <filesystem>

#include "platform/Mach/MachHost.h"

namespace tarni::posix {

class MachHost : public platform::MachHost {
 public:
  // `proc` is the folder with the kernel's files; another one serves tests.
  explicit MachHost(std::filesystem::path proc = "/proc") : proc_(std::move(proc)) {}

  // The "cpu0", "cpu1", … lines of "stat"; the times of interrupts count as the system's.
  std::optional<std::vector<platform::ProcessorTicks>> hostProcessorInfo() override;
  // Counts of "vmstat", in pages of this machine; wired is what the kernel cannot reclaim.
  std::optional<platform::VMStatistics64> hostStatistics64() override;
  unsigned activeProcessorCount() override;
  std::uint64_t physicalMemory() override;
  // Knows "hw.machine", "hw.model", "hw.ncpu", "hw.activecpu", "hw.memsize", "hw.pagesize",
  // "kern.ostype", "kern.osrelease", "kern.version" and "kern.hostname".
  std::optional<std::vector<std::byte>> sysctlbyname(std::string_view name) override;

 private:
  std::filesystem::path proc_;
};

}  // namespace tarni::posix
