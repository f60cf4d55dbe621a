// Encoding: UUIDs and base-64 from GLib. Any thread.
#pragma once

#include "platform/Foundation/Foundation.h"

namespace tarni::headless {

class Encoding : public platform::NSEncoding {
 public:
  std::string UUIDString() const override;
  std::string base64EncodedString(std::span<const std::byte> data) const override;
};

}  // namespace tarni::headless
