#include "agent/TcpCommunication/BaseManager/Framing.h"

#include <array>
#include <cstdio>

namespace tarni {

std::string framed(std::string_view payload) {
  std::array<char, 24> length;
  std::snprintf(length.data(), length.size(), "%010zu", payload.size());
  std::string message(length.data());
  message += payload;
  return message;
}

}  // namespace tarni
