#include "platform/Foundation/NSLog.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "platform/Platform.h"

namespace tarni::platform {

void NSLog(const char* format, ...) noexcept {
  std::array<char, 256> shortLine;
  va_list arguments;
  va_start(arguments, format);
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(shortLine.data(), shortLine.size(), format, arguments);
  va_end(arguments);
  if (length >= 0 && static_cast<std::size_t>(length) < shortLine.size()) {
    current().log->write({shortLine.data(), static_cast<std::size_t>(length)});
  } else if (length >= 0) {
    std::string longLine(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(longLine.data(), longLine.size() + 1, format, again);
    current().log->write(longLine);
  }
  va_end(again);
}

}  // namespace tarni::platform
