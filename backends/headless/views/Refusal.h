// What a control answers that is asked for a value which it does not have.
#pragma once

#include <string>
#include <vector>

namespace tarni::headless {

// Throws NSException (invalid argument) that names the choices.
[[noreturn]] void refuseValue(const std::string& value, const std::string& choices);
[[noreturn]] void refuseValue(const std::string& value, const std::vector<std::string>& choices);

}  // namespace tarni::headless
