#include "backends/posix/ProcessInfo.h"

#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <system_error>

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

double ProcessInfo::processorTime() const {
  return static_cast<double>(nanoseconds(CLOCK_PROCESS_CPUTIME_ID)) * 1e-9;
}

std::optional<std::uint64_t> ProcessInfo::residentMemory() const {
  std::ifstream file("/proc/self/statm");
  std::uint64_t total = 0;
  std::uint64_t resident = 0;
  if (!(file >> total >> resident)) return std::nullopt;
  return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

std::string ProcessInfo::executablePath() const {
  std::error_code failure;
  return std::filesystem::read_symlink("/proc/self/exe", failure);
}

}  // namespace tarni::posix
