#include "agent/CPU/CPULoadFilter.h"

namespace tarni {

CPULoad CPULoadFilter::filterLoad(const CPULoad& load) {
  rawCpuLoadHistory_.push_back(load);
  const auto entries = static_cast<double>(rawCpuLoadHistory_.size());
  const auto average = [&](double CPULoad::*value) {
    double sum = 0;
    for (const CPULoad& entry : rawCpuLoadHistory_) sum += entry.*value;
    return sum / entries;
  };
  CPULoad filtered{.system = average(&CPULoad::system),
                   .user = average(&CPULoad::user),
                   .nice = average(&CPULoad::nice),
                   .systemWithoutNice = average(&CPULoad::systemWithoutNice),
                   .userWithoutNice = average(&CPULoad::userWithoutNice)};
  filtered.total = filtered.system + filtered.user + filtered.nice;
  return filtered;
}

void CPULoadFilter::appendRawCpuLoad(const CPULoad& load) {
  rawCpuLoadHistory_.push_front(load);
  while (rawCpuLoadHistory_.size() > kRawHistoryLimit) rawCpuLoadHistory_.pop_back();
}

}  // namespace tarni
