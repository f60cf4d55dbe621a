// The characters of a UTF-8 text. Any thread.
#pragma once

#include <string>

namespace tarni::platform {

// Whether the byte goes on with a character that began before it.
constexpr bool isInsideCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// What the key of a character types while Shift is down: the capital of a small letter of ASCII.
// Any other character has been chosen as it is.
inline std::string withShift(std::string character) {
  const bool isSmall = character.size() == 1 && character[0] >= 'a' && character[0] <= 'z';
  if (isSmall) character[0] = static_cast<char>(character[0] - 'a' + 'A');
  return character;
}

}  // namespace tarni::platform
