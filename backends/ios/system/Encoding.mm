#include "backends/ios/system/Encoding.h"

#include "backends/ios/runtime/Values.h"

namespace tarni::ios {

std::string Encoding::UUIDString() const {
  @autoreleasepool {
    return toTextOrEmpty([[NSUUID UUID] UUIDString]);
  }
}

std::string Encoding::base64EncodedString(std::span<const std::byte> data) const {
  @autoreleasepool {
    return toTextOrEmpty([[NSData dataWithBytes:data.data()
                                         length:data.size()] base64EncodedStringWithOptions:0]);
  }
}

}  // namespace tarni::ios
