// Utilities, on plain text: letters, numbers, identifiers. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace tarni::Utilities {

// Lower case of every letter that has one, not only of ASCII.
std::string lowercaseString(std::string_view text);

bool containsIgnoringCase(std::string_view text, std::string_view part);

// The decimal digits of `value` with a point, whatever the application's locale.
std::string decimalText(double value, int decimals);

// A new random UUID in upper case.
std::string getGUIDString();

}  // namespace tarni::Utilities
