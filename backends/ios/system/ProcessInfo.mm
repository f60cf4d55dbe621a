#include "backends/ios/system/ProcessInfo.h"

#include <mach/mach.h>

#include <ctime>

#include "backends/ios/Apple.h"

namespace tarni::ios {

double ProcessInfo::systemUptime() const {
  return static_cast<double>([[::NSProcessInfo processInfo] systemUptime]);
}

double ProcessInfo::currentMediaTime() const { return CACurrentMediaTime(); }

std::uint64_t ProcessInfo::machAbsoluteTime() const { return mach_absolute_time(); }

bool ProcessInfo::respondsToIsOperatingSystemAtLeastVersion() const {
  return [[::NSProcessInfo processInfo]
      respondsToSelector:@selector(isOperatingSystemAtLeastVersion:)];
}

bool ProcessInfo::isOperatingSystemAtLeastVersion(
    platform::NSOperatingSystemVersion version) const {
  return [[::NSProcessInfo processInfo]
      isOperatingSystemAtLeastVersion:{version.majorVersion, version.minorVersion,
                                       version.patchVersion}];
}

double ProcessInfo::processorTime() const {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::optional<std::uint64_t> ProcessInfo::residentMemory() const {
  mach_task_basic_info_data_t info{};
  mach_msg_type_number_t wordCount = MACH_TASK_BASIC_INFO_COUNT;
  const kern_return_t result = task_info(mach_task_self(), MACH_TASK_BASIC_INFO,
                                         reinterpret_cast<task_info_t>(&info), &wordCount);
  if (result != KERN_SUCCESS) return std::nullopt;
  return info.resident_size;
}

std::string ProcessInfo::executablePath() const {
  const char* const path = [[[NSBundle mainBundle] executablePath] UTF8String];
  return path ? path : "";
}

}  // namespace tarni::ios
