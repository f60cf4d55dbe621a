// The characters of a UTF-8 text. Any thread.
#pragma once

namespace tarni::platform {

// Whether the byte goes on with a character that began before it.
constexpr bool isInsideCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace tarni::platform
