// What the kernel tells about the machine: processor ticks, memory statistics, system-control
// values. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tarni::platform {

// Ticks of one core since boot; they wrap.
struct ProcessorTicks {
  std::uint32_t user = 0;
  std::uint32_t system = 0;
  std::uint32_t idle = 0;
  std::uint32_t nice = 0;
};

// Pages by use, and counts of events since boot.
struct VMStatistics64 {
  std::uint64_t activePages = 0;
  std::uint64_t inactivePages = 0;
  std::uint64_t wiredPages = 0;
  std::uint64_t pageIns = 0;
  std::uint64_t pageOuts = 0;
  std::uint64_t faults = 0;
};

class MachHost {
 public:
  virtual ~MachHost() = default;
  // One entry a core, in the kernel's order; null when the kernel gives none.
  virtual std::optional<std::vector<ProcessorTicks>> hostProcessorInfo() = 0;
  // Null when the kernel gives none.
  virtual std::optional<VMStatistics64> hostStatistics64() = 0;
  virtual unsigned activeProcessorCount() = 0;
  // Bytes.
  virtual std::uint64_t physicalMemory() = 0;
  // The bytes of a system-control value ("hw.memsize", "hw.machine"): an integer of 4 or 8 bytes in
  // the machine's order, or text that ends in NUL. Null when there is no such name.
  virtual std::optional<std::vector<std::byte>> sysctlbyname(std::string_view name) = 0;
};

}  // namespace tarni::platform
