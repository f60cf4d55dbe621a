// QtEncoding: UUIDs and base-64 text as Qt makes them. Any thread.
#pragma once

#include "platform/Foundation/Foundation.h"

namespace tarni::qt {

class QtEncoding : public platform::NSEncoding {
 public:
  std::string UUIDString() const override;
  std::string base64EncodedString(std::span<const std::byte> data) const override;
};

}  // namespace tarni::qt
