#include "platform/Foundation/Guid.h"

#include <unordered_map>

#include "platform/Platform.h"

namespace tarni::platform {

Guid Guid::next() {
  static std::uint32_t last = 0;
  return Guid(++last);
}

const std::string& Guid::text() const {
  static auto* const texts = new std::unordered_map<std::uint32_t, std::string>;
  const auto [place, isNew] = texts->try_emplace(number_);
  if (isNew) place->second = current().encoding->UUIDString();
  return place->second;
}

}  // namespace tarni::platform
