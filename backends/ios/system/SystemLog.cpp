#include "backends/ios/system/SystemLog.h"

#include <algorithm>

namespace tarni::ios {
namespace {

// The log cuts an entry at 1024 bytes, its own among them.
constexpr std::size_t kLongestPiece = 900;

bool continuesACharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t lengthOfPiece(std::string_view line) noexcept {
  if (line.size() <= kLongestPiece) return line.size();
  std::size_t length = kLongestPiece;
  while (length > kLongestPiece - 4 && continuesACharacter(line[length])) --length;
  return length;
}

}  // namespace

void SystemLog::write(std::string_view line) noexcept {
  do {
    const std::size_t length = lengthOfPiece(line);
    os_log(log_, "%{public}.*s", static_cast<int>(length), line.data());
    line.remove_prefix(length);
  } while (!line.empty());
}

}  // namespace tarni::ios
