// CPULoadFilter: the average of all loads that it was given. One thread at a time.
#pragma once

#include <deque>

#include "agent/CPU/CPULoad.h"

namespace tarni {

class CPULoadFilter {
 public:
  // Adds the load to the history and answers the average of the whole history.
  CPULoad filterLoad(const CPULoad& load);

  // Puts the load in front of a history whose limit is zero entries: it is empty afterwards.
  void appendRawCpuLoad(const CPULoad& load);

  const std::deque<CPULoad>& rawCpuLoadHistory() const { return rawCpuLoadHistory_; }

 private:
  static constexpr std::size_t kRawHistoryLimit = 0;

  std::deque<CPULoad> rawCpuLoadHistory_;
};

}  // namespace tarni
