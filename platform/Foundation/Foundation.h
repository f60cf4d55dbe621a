// The few services of Foundation that the agent uses beside strings and collections.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/Task.h"

namespace tarni::platform {

class UIView;

struct NSOperatingSystemVersion {
  int majorVersion = 0;
  int minorVersion = 0;
  int patchVersion = 0;

  auto operator<=>(const NSOperatingSystemVersion&) const = default;
};

// Facts about the process and the machine. Any thread.
class NSProcessInfo {
 public:
  virtual ~NSProcessInfo() = default;
  // Seconds since the system started; monotonic.
  virtual double systemUptime() const = 0;
  // The clock that animations run on, in seconds; monotonic.
  virtual double currentMediaTime() const = 0;
  // The tick count that digitizer records carry; monotonic, unit unspecified.
  virtual std::uint64_t machAbsoluteTime() const = 0;
  // False on systems too old to know the question below.
  virtual bool respondsToIsOperatingSystemAtLeastVersion() const = 0;
  virtual bool isOperatingSystemAtLeastVersion(NSOperatingSystemVersion version) const = 0;
  // Seconds that the process has computed, on all processors together.
  virtual double processorTime() const = 0;
  // Bytes that the process has in memory; null where the system does not say.
  virtual std::optional<std::uint64_t> residentMemory() const = 0;
  // The file that runs; empty where the system does not say.
  virtual std::string executablePath() const = 0;
};

// Encodings that every platform brings along. Any thread.
class NSEncoding {
 public:
  virtual ~NSEncoding() = default;
  // A fresh random UUID in its canonical upper-case form.
  virtual std::string UUIDString() const = 0;
  // Base-64 text without line breaks; empty for no bytes.
  virtual std::string base64EncodedString(std::span<const std::byte> data) const = 0;
};

// The default notification centre. Main thread.
class NSNotificationCenter {
 public:
  virtual ~NSNotificationCenter() = default;
  // Runs the application's observers of `name` with `object` as the sender.
  virtual Task<void> postNotificationName(std::string_view name,
                                          std::shared_ptr<UIView> object) = 0;
};

}  // namespace tarni::platform
