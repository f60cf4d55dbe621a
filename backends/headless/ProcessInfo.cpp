#include "backends/headless/ProcessInfo.h"

namespace tarni::headless {

std::uint64_t ProcessInfo::machAbsoluteTime() const {
  constexpr double kNanosecondsPerSecond = 1e9;
  return posix::ProcessInfo::machAbsoluteTime() +
         static_cast<std::uint64_t>(skipped_ * kNanosecondsPerSecond);
}

}  // namespace tarni::headless
