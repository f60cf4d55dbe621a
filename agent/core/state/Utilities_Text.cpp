#include "agent/core/state/Utilities_Text.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "platform/Foundation/Lowercase.h"
#include "platform/Platform.h"

namespace tarni::Utilities {

bool containsLowercase(std::string_view text, std::string_view lowercasePart) {
  return platform::lowercaseString(text).find(lowercasePart) != std::string::npos;
}

std::string decimalText(double value, int decimals) {
  // Not `to_chars`, which the oldest supported systems lack for fractions.
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << std::fixed << std::setprecision(decimals) << value;
  return text.str();
}

std::string getGUIDString() {
  return platform::current().encoding->UUIDString();
}

}  // namespace tarni::Utilities
