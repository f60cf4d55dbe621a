#include "backends/posix/ProcessInfo.h"

#include <ctime>

namespace tarni::posix {
namespace {

std::uint64_t nanoseconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U +
         static_cast<std::uint64_t>(now.tv_nsec);
}

}  // namespace

double ProcessInfo::systemUptime() const {
  return static_cast<double>(nanoseconds(CLOCK_BOOTTIME)) * 1e-9;
}

double ProcessInfo::currentMediaTime() const {
  return static_cast<double>(nanoseconds(CLOCK_MONOTONIC)) * 1e-9;
}

std::uint64_t ProcessInfo::machAbsoluteTime() const {
  return nanoseconds(CLOCK_MONOTONIC);
}

}  // namespace tarni::posix
