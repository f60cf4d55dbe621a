// Base-64 as the agent writes it: no line breaks.
#pragma once

#include <string>

namespace tarni::host {

// The bytes; empty when the text is not base-64.
std::string decodeBase64(const std::string& text);

}  // namespace tarni::host
