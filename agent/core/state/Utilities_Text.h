// Utilities, on plain text: letters, numbers, identifiers. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace tarni::Utilities {

// Whether the text in lower case holds the part, which is in lower case already: many texts are
// held against one part.
bool containsLowercase(std::string_view text, std::string_view lowercasePart);

// The decimal digits of `value` with a point, whatever the application's locale.
std::string decimalText(double value, int decimals);

// A new random UUID in upper case.
std::string getGUIDString();

}  // namespace tarni::Utilities
