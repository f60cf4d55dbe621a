// Encoding: NSUUID and NSData. Any thread.
#pragma once

#include "platform/Foundation/Foundation.h"

namespace tarni::ios {

class Encoding : public platform::NSEncoding {
 public:
  std::string UUIDString() const override;
  std::string base64EncodedString(std::span<const std::byte> data) const override;
};

}  // namespace tarni::ios
