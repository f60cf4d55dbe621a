// Helpers for the places at which exceptions end. Any thread.
#pragma once

#include <string>

namespace tarni::Diagnostics {

// The reason of the exception that is being handled, for use inside a `catch`.
std::string reasonOfCurrentException();

// Logs "context: reason" of the exception that is being handled.
void logCurrentException(const char* context) noexcept;

}  // namespace tarni::Diagnostics
