#include "backends/ios/system/ProcessInfo.h"

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

}  // namespace tarni::ios
