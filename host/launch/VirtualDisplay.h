// VirtualDisplay: an X display without a screen (Xvfb), ended with its owner, and with the thread
// that made it. Any thread.
#pragma once

#include <sys/types.h>

#include <string>

namespace tarni::host {

inline constexpr auto kUsualDisplaySize = "1280x800";

class VirtualDisplay {
 public:
  // `size` as "1280x800". Throws std::runtime_error when Xvfb is not installed or does not start.
  explicit VirtualDisplay(const std::string& size);
  VirtualDisplay(const VirtualDisplay&) = delete;
  VirtualDisplay& operator=(const VirtualDisplay&) = delete;
  ~VirtualDisplay();

  // What DISPLAY has to be, ":7".
  const std::string& name() const { return name_; }

 private:
  pid_t pid_ = -1;
  std::string name_;
};

}  // namespace tarni::host
