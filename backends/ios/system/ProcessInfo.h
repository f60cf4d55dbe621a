// ProcessInfo: NSProcessInfo and the clocks. Any thread.
#pragma once

#include "platform/Foundation/Foundation.h"

namespace tarni::ios {

class ProcessInfo : public platform::NSProcessInfo {
 public:
  double systemUptime() const override;
  double currentMediaTime() const override;
  std::uint64_t machAbsoluteTime() const override;
  bool respondsToIsOperatingSystemAtLeastVersion() const override;
  bool isOperatingSystemAtLeastVersion(platform::NSOperatingSystemVersion version) const override;
  double processorTime() const override;
  std::optional<std::uint64_t> residentMemory() const override;
  std::string executablePath() const override;
};

}  // namespace tarni::ios
