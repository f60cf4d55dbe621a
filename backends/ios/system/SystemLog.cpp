#include "backends/ios/system/SystemLog.h"

#include <algorithm>

#include "platform/Foundation/Characters.h"

namespace tarni::ios {
namespace {

// The log cuts an entry at 1024 bytes, its own among them.
constexpr std::size_t kLongestPiece = 900;

std::size_t lengthOfPiece(std::string_view line) noexcept {
  if (line.size() <= kLongestPiece) return line.size();
  std::size_t length = kLongestPiece;
  while (length > kLongestPiece - 4 && platform::isInsideCharacter(line[length])) --length;
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
