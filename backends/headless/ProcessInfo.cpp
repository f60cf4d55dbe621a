#include "backends/headless/ProcessInfo.h"

namespace tarni::headless {

std::uint64_t ProcessInfo::machAbsoluteTime() const {
  constexpr double nanosecondsPerSecond = 1e9;
  return posix::ProcessInfo::machAbsoluteTime() +
         static_cast<std::uint64_t>(skipped_ * nanosecondsPerSecond);
}

}  // namespace tarni::headless
