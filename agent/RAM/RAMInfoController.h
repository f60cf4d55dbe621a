// RAMInfoController: reads the memory statistics of the machine. Any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "agent/RAM/RAMUsage.h"

namespace tarni {

class RAMInfoController {
 public:
  // The physical memory in bytes.
  std::uint64_t getRAMTotal() const;

  // Null when the statistics cannot be read. Pages count 4096 bytes on every machine, and what is
  // not in use counts as free.
  std::optional<RAMUsage> getRAMUsage() const;

  // Kept for whoever watches the memory over time; the controller itself uses neither.
  std::weak_ptr<void> delegate;
  std::vector<RAMUsage> ramUsageHistory;
};

}  // namespace tarni
