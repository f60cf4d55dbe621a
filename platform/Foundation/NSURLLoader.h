// Reading a text from an address. Main thread.
#pragma once

#include <optional>
#include <string>

#include "platform/Task.h"

namespace tarni::platform {

class NSURLLoader {
 public:
  virtual ~NSURLLoader() = default;
  // The text at the address, read as UTF-8; null when it cannot be read.
  virtual Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) = 0;
};

}  // namespace tarni::platform
