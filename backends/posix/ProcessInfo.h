// ProcessInfo: clocks of the machine, and the system version that the backend claims to be.
//
// Any thread; the setters are for start-up and tests.
#pragma once

#include "platform/Foundation/Foundation.h"

namespace tarni::posix {

class ProcessInfo : public platform::NSProcessInfo {
 public:
  double systemUptime() const override;
  double currentMediaTime() const override;
  // Nanoseconds.
  std::uint64_t machAbsoluteTime() const override;
  bool respondsToIsOperatingSystemAtLeastVersion() const override { return knowsVersionQuestion_; }
  bool isOperatingSystemAtLeastVersion(platform::NSOperatingSystemVersion version) const override {
    return version_ >= version;
  }
  double processorTime() const override;
  std::optional<std::uint64_t> residentMemory() const override;
  std::string executablePath() const override;

  void setOperatingSystemVersion(platform::NSOperatingSystemVersion version) { version_ = version; }
  void setRespondsToIsOperatingSystemAtLeastVersion(bool responds) {
    knowsVersionQuestion_ = responds;
  }

 private:
  platform::NSOperatingSystemVersion version_{12, 4, 0};
  bool knowsVersionQuestion_ = true;
};

}  // namespace tarni::posix
