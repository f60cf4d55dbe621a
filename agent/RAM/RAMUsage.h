// RAMUsage and RAMInfo: plain facts about the memory.
#pragma once

#include <cstdint>
#include <string>

namespace tarni {

struct RAMUsage {
  // Bytes.
  std::uint64_t usedRam = 0;
  std::uint64_t activeRam = 0;
  std::uint64_t inactiveRam = 0;
  std::uint64_t wiredRam = 0;
  std::uint64_t freeRam = 0;
  // Counts since boot.
  std::uint64_t pageIns = 0;
  std::uint64_t pageOuts = 0;
  std::uint64_t pageFaults = 0;
};

// Kept for callers from outside.
struct RAMInfo {
  // Bytes.
  std::uint64_t totalRam = 0;
  std::string ramType;
};

}  // namespace tarni
